// Deep Breath: dive for pearls, mind the jellyfish, and come up for air.
#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <new>

const KXSize view = {320, 200};           // what is seen, in units of the game
const KXRect sea = {{0, 40}, {320, 160}}; // under the sky
const KXColor foam = KXMakeColori(226, 246, 246, 255);

static void drawSea() {
    KXShapePaint water(KXMakeColori(74, 168, 190, 255));
    water.gradient = KXGradientLinear; // the deeper, the darker
    water.endColor = KXMakeColori(14, 42, 92, 255);
    water.from = sea.origin;
    water.to = {sea.origin.x, KXRectEnd(sea).y};
    KXDrawRoundedRect(sea, 0, water);
    KXDrawRectFill({sea.origin, {sea.size.width, 2}}, foam);
}

struct Diver {
    KXPoint at = {sea.size.width / 2, sea.origin.y};
    KXPoint speed = {0, 0}; // in a step

    void step() {
        KXPoint push = {0, 0};
        if (KXKeyHeld(KXKeyLeft))
            push.x -= 1;
        if (KXKeyHeld(KXKeyRight))
            push.x += 1;
        if (KXKeyHeld(KXKeyUp))
            push.y -= 1;
        if (KXKeyHeld(KXKeyDown))
            push.y += 1;
        speed = (speed + push * 0.12f) * 0.94f; // water slows down whatever moves in it
        at = KXClampedToRect(at + speed, sea);
    }

    void draw() const { KXDrawCircleFill(at, 8, 32, KXMakeColori(214, 84, 72, 255)); }
};

static void play() {
    KXWindow window("Deep Breath", view * 2, -1);
    window.setLogicalSize({view}); // whatever size the user gives the window
    Diver diver;

    KXSetLogicExact(-1);        // 60 steps a second on every display
    KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
    KXResetLogicLoop();
    while (!KXApplicationQuitRequested()) {
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            diver.step();
            KXLogicUpdate();
        }
        window.setRenderContext();
        KXClear(KXMakeColori(196, 226, 232, 255)); // the sky
        drawSea();
        diver.draw();
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
