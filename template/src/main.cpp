#include "Controls.h"
#include "Memory.h"
#include "Scene.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

static void show(KXWindow& window, const Memory& memory) {
    if (!window.setFullscreen(memory.fullscreen() ? KXFullscreenBorderless : KXFullscreenOff))
        std::fprintf(stderr, "my_game: %s\n", KXError());
}

// Plays until the window is closed, or for a number of frames: then each is one step, as soon as the one
// before is done. @param screenshot written at the end; null for none.
static int play(int frames, const char* screenshot) {
    KXWindow window("My Game", Scene::size);
    window.setRenderContext();            // what is loaded from here on is loaded for this window
    window.setLogicalSize({Scene::size}); // however large the window is
    Scene scene;
    Memory memory;
    scene.setRound(memory.round());
    if (memory.fullscreen())
        show(window, memory);
    const Controls controls(KXUserPath("controls.txt"));
    KXSetLogicExact(-1);        // the same speed on every display
    KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
    KXResetLogicLoop();
    for (int frame = 0; !KXApplicationQuitRequested() && (frames == 0 || frame < frames); ++frame) {
        KXPreLogicLoop();
        while (KXLogicLoop()) { // 60 times a second, whatever the drawing takes
            if (controls.leaves())
                KXApplicationRequestQuit();
            if (controls.switchesFullscreen()) {
                memory.setFullscreen(!memory.fullscreen());
                show(window, memory);
            }
            scene.step(controls.push());
            if (scene.isOver()) {
                memory.enterScore(scene.round().score);
                scene.setRound(Round());
            }
            KXLogicUpdate();
            if (frames)
                KXResetLogicLoop(); // one step is owed, and no more
        }
        window.setRenderContext();
        scene.draw(memory.best().empty() ? 0 : static_cast<int>(memory.best().front()));
        window.swapBuffers();
        KXFPSTick();
        KXPostLogicLoop();
        KXWaitForLogicStep();
    }
    memory.keep(scene.round());
    if (screenshot && !window.saveBuffer(screenshot, 0)) {
        std::fprintf(stderr, "my_game: %s\n", KXError());
        return 1;
    }
    return 0;
}

int main(int argc, char** argv) {
    int frames = 0;
    const char* screenshot = nullptr;
    for (int i = 1; i < argc; i += 2) {
        const char* value = argv[i + 1]; // null behind the last one
        if (value && std::strcmp(argv[i], "--frames") == 0) {
            frames = std::atoi(value);
        } else if (value && std::strcmp(argv[i], "--screenshot") == 0) {
            screenshot = value;
        } else {
            std::fprintf(stderr, "usage: my_game [--frames N] [--screenshot FILE.bmp]\n");
            return 2;
        }
    }

    KXSetGameName(nullptr, KOBALTRIX_GAME_NAME); // of the folders of its files and the player's
    if (!KXInit(argv[0])) {
        std::fprintf(stderr, "my_game: %s\n", KXError());
        return 1;
    }
    KXInitPads();
    int result = 1;
    try {
        result = play(frames, screenshot);
    } catch (const std::exception& error) { // the library's own say more in KXError()
        std::fprintf(stderr, "my_game: %s %s\n", error.what(), KXError());
    }
    KXDeInit();
    return result;
}
