#include "Demo.h"
#include "Options.h"
#include "Script.h"

#include <cstdio>
#include <cstdlib>
#include <new>

// Without anybody watching each frame runs one logic step and no frame is left without one: the same pictures
// come out on a slow machine as on a fast one.
static void run(Demo& demo, const Options& options) {
    const int lastFrame = options.frames ? options.frames : options.headless ? scriptLength : 0;
    int frames = 0, titleSecond = -1;
    KXResetLogicLoop();
    while (!KXApplicationQuitRequested() && (!lastFrame || frames < lastFrame)) {
        KXPreLogicLoop();
        int steps = 0;
        while (KXLogicLoop()) {
            demo.step();
            KXLogicUpdate();
            ++steps;
            if (options.headless)
                break;
        }
        if (steps || !options.headless) {
            demo.draw();
            demo.window().swapBuffers();
            KXFPSTick();
            ++frames;
            if (options.headless)
                playScript(frames, demo.window().id());
        }
        KXPostLogicLoop();
        if (const int second = static_cast<int>(KXElapsedTime()); second != titleSecond) {
            titleSecond = second;
            demo.window().setTitle(KXTempString("Kobaltrix: %d frames a second", KXFPS()));
        }
    }
}

int main(int argc, char** argv) {
    Options options;
    if (!readOptions(argc, argv, options))
        return 2;
    if (options.help) {
        printUsage();
        return 0;
    }
    if (options.headless && options.screenshot.empty())
        options.screenshot = "kobaltrix-demo.png";

    if (!KXInit(argv[0])) {
        std::fprintf(stderr, "play: %s\n", KXError());
        return 1;
    }
    if (options.headless)
        std::srand(1); // the same pictures every time
    int result = 0;
    try {
        Demo demo(std::string(KXExecutablePath ? KXExecutablePath : ".") + "/assets");
        run(demo, options);
        if (!options.screenshot.empty() && !demo.save(options.screenshot))
            result = 1;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "play: a window or a picture cannot be opened. %s\n", KXError());
        result = 1;
    }
    KXDeInit();
    return result;
}
