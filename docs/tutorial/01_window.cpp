// Deep Breath: dive for pearls, mind the jellyfish, and come up for air.
#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <new>

const KXSize view = {320, 200}; // what is seen, in units of the game

static void play() {
    KXWindow window("Deep Breath", view * 2, -1);
    window.setLogicalSize({view}); // whatever size the user gives the window

    KXSetLogicExact(-1);        // 60 steps a second on every display
    KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
    KXResetLogicLoop();
    while (!KXApplicationQuitRequested()) {
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            KXLogicUpdate();
        }
        window.setRenderContext();
        KXClear(KXMakeColori(74, 168, 190, 255));
        window.swapBuffers();
        KXPostLogicLoop();
        KXWaitForLogicStep(); // sleeps until it goes on
    }
}

static int failed(const char* why) {
    std::fprintf(stderr, "deep_breath: %s\n", why);
    return 1;
}

int main(int, char** argv) {
    KXSetGameName(nullptr, "deep_breath"); // the folders of its files have this name
    if (!KXInit(argv[0]))
        return failed(KXError());
    int status = 0;
    try {
        play();
    } catch (const std::bad_alloc&) { // there is no window to be had
        status = failed(KXError());
    }
    KXDeInit();
    return status;
}
