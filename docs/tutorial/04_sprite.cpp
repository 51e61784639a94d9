// Deep Breath: dive for pearls, mind the jellyfish, and come up for air.
#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <new>
#include <stdexcept>
#include <string>

const KXSize view = {320, 200};           // what is seen, in units of the game
const KXRect sea = {{0, 40}, {320, 160}}; // under the sky
const KXColor foam = KXMakeColori(226, 246, 246, 255);

// The path of one of the game's files, wherever the game is installed.
static const char* file(const char* name) {
    const char* path = KXDataPath(name);
    if (!path)
        throw std::runtime_error(KXError());
    if (!KXFileExists(path))
        throw std::runtime_error(std::string(path) + " is missing.");
    return path;
}

static KXSprite spriteOf(const char* animation) {
    KXSprite sprite;
    if (!sprite.load(file("sea.spr")))
        throw std::runtime_error("sea.spr is no sprite file.");
    sprite.setAnimation(animation);
    return sprite;
}

// What the player steers with: arrow keys, the places of W, A, S and D, or any pad.
static KXActions bindings() {
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
        actions.bind(way.action, KXInputOfPad(way.stick, KXAnyPad));
        actions.bind(way.action, KXInputOfPad(way.cross, KXAnyPad));
    }
    return actions;
}

// Where the player steers: at most 1 long.
static KXPoint push(const KXActions& actions) {
    const KXPoint way = {actions.value("right") - actions.value("left"),
                         actions.value("down") - actions.value("up")};
    return KXLength(way) > 1 ? KXNormalized(way) : way;
}

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
    bool looksLeft = false, swims = false;
    KXSprite sprite = spriteOf("float");

    void step(KXPoint push) {
        speed = (speed + push * 0.12f) * 0.94f; // water slows down whatever moves in it
        at = KXClampedToRect(at + speed, sea);
        if (push.x != 0)
            looksLeft = push.x < 0;
        if (swims != (push != KXZeroPoint)) { // setting an animation starts it afresh
            swims = !swims;
            sprite.setAnimation(swims ? "swim" : "float");
        }
        sprite.poll(); // an animation goes on with the steps
    }

    void draw() {
        const float tilt = 16 * speed.y; // degrees: head first
        sprite.draw({.flip = looksLeft ? KXFlipLeftRight : KXFlipNone,
                     .position = at,
                     .origin = {12, 7}, // the middle of its frames
                     .rotation = looksLeft ? -tilt : tilt});
    }
};

static void play() {
    KXWindow window("Deep Breath", view * 2, -1);
    window.setLogicalSize({view}); // whatever size the user gives the window
    window.setRenderContext();
    Diver diver;
    const KXActions actions = bindings();

    KXSetLogicExact(-1);        // 60 steps a second on every display
    KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
    KXResetLogicLoop();
    while (!KXApplicationQuitRequested()) {
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            diver.step(push(actions));
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
    KXInitPads();
    int status = 0;
    try {
        play();
    } catch (const std::bad_alloc&) { // no window, or a file that cannot be loaded
        status = failed(KXError());
    } catch (const std::runtime_error& error) {
        status = failed(error.what());
    }
    KXDeInit();
    return status;
}
