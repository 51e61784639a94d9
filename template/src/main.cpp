#include "Scene.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

// What the player steers with: the arrow keys, the places of W, A, S and D, or any pad. A file that lies
// beside the game may say something else.
static KXActions controls(const std::string& file) {
    const struct {
        const char* action;
        int key, position, stick, cross;
    } ways[] = {{"left", KXKeyLeft, KXPositionA, KXPadLeftStickLeft, KXPadDPadLeft},
                {"right", KXKeyRight, KXPositionD, KXPadLeftStickRight, KXPadDPadRight},
                {"up", KXKeyUp, KXPositionW, KXPadLeftStickUp, KXPadDPadUp},
                {"down", KXKeyDown, KXPositionS, KXPadLeftStickDown, KXPadDPadDown}};
    KXActions actions;
    for (const auto& way : ways) {
        actions.bind(way.action, KXInputOfKey(way.key));
        actions.bind(way.action, KXInputOfPosition(way.position));
        for (const int button : {way.stick, way.cross})
            actions.bind(way.action, KXInputOfPad(button, KXAnyPad));
    }
    actions.bind("leave", KXInputOfKey(KXKeyEscape));
    if (KXFileExists(file.c_str()) && !actions.load(file.c_str()))
        std::fprintf(stderr, "my_game: %s\n", KXError());
    return actions;
}

// Plays until the window is closed, or for a number of frames: then each is one step, as soon as the one
// before is done. @param screenshot written at the end; null for none.
static int play(int frames, const char* screenshot) {
    KXWindow window("My Game", Scene::size);
    window.setRenderContext(); // what is loaded from here on is loaded for this window
    const std::string folder = KXExecutablePath ? KXExecutablePath : ".";
    Scene scene(folder + "/assets");
    const KXActions actions = controls(folder + "/controls.txt");
    KXSetLogicExact(-1);        // the same speed on every display
    KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
    KXResetLogicLoop();
    for (int frame = 0; !KXApplicationQuitRequested() && (frames == 0 || frame < frames); ++frame) {
        KXPreLogicLoop();
        while (KXLogicLoop()) { // 60 times a second, whatever the drawing takes
            if (actions.wentDown("leave"))
                KXApplicationRequestQuit();
            scene.step({actions.value("right") - actions.value("left"),
                        actions.value("down") - actions.value("up")});
            KXLogicUpdate();
            if (frames)
                KXResetLogicLoop(); // one step is owed, and no more
        }
        window.setRenderContext();
        scene.draw();
        window.swapBuffers();
        KXFPSTick();
        KXPostLogicLoop();
        KXWaitForLogicStep();
    }
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
