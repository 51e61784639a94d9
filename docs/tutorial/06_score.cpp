// Deep Breath: dive for pearls, mind the jellyfish, and come up for air.
#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

const KXSize view = {320, 200};           // what is seen, in units of the game
const KXRect sea = {{0, 40}, {320, 160}}; // under the sky
const KXRect depths = KXGrownRect(sea, {-16, -40});
const KXColor foam = KXMakeColori(226, 246, 246, 255);
const KXColor ink = KXMakeColori(16, 38, 66, 255);

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
    int stunned = 0; // steps that are left

    void step(KXPoint push) {
        if (stunned > 0) {
            --stunned;
            push = {0, 0};
        }
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

    void sting(KXPoint from) {
        stunned = 30;
        speed = KXNormalized(at - from) * 4;
    }

    void draw() {
        const float tilt = 16 * speed.y; // degrees: head first
        sprite.draw({.flip = looksLeft ? KXFlipLeftRight : KXFlipNone,
                     .position = at,
                     .origin = {12, 7}, // the middle of its frames
                     .rotation = looksLeft ? -tilt : tilt,
                     .tint = {1, stunned / 4 % 2 ? 0.4f : 1, 1, 1}}); // it blinks
    }
};

// It drifts up and down around its home.
struct Jelly {
    KXPoint home;
    KXTween drift;

    KXPoint at() const { return home + KXPoint{0, drift.value()}; }
};

class Dive {
public:
    Dive() { begin(); }

    void begin() {
        _diver = Diver();
        _jellies.clear();
        for (int i = 0; i < 3; ++i)
            addJelly();
        _pearls.clear();
        for (int i = 0; i < 4; ++i)
            _pearls.push_back(_dice.pointIn(depths));
        _score = 0;
        _air = 1;
    }

    void step(KXPoint push) {
        _diver.step(push);
        for (KXPoint& pearl : _pearls)
            if (KXCirclesOverlap(_diver.at, 7, pearl, 6))
                gather(pearl);
        for (Jelly& jelly : _jellies) {
            jelly.drift.step();
            if (!_diver.stunned && KXCirclesOverlap(_diver.at, 6, jelly.at(), 7))
                sting(jelly.at());
        }
        _pearl.poll();
        _jelly.poll();
        breathe();
        if (_air <= 0)
            begin();
    }

    void draw() {
        drawSea();
        for (const KXPoint pearl : _pearls)
            _pearl.draw({.position = pearl, .origin = {6, 6}});
        for (Jelly& jelly : _jellies)
            _jelly.draw({.position = jelly.at(), .origin = {8, 6}});
        _diver.draw();
        drawGauges();
    }

private:
    void addJelly() {
        KXTweenSettings drift = {
            .from = -20, .to = 20, .ease = KXEaseInOutSine, .repeats = -1, .backAndForth = -1};
        drift.seconds = _dice.range(1.5f, 3.0f);
        _jellies.push_back({_dice.pointIn(depths), KXTween(drift)});
    }

    void gather(KXPoint& pearl) {
        pearl = _dice.pointIn(depths);
        if (++_score % 5 == 0)
            addJelly();
    }

    void sting(KXPoint from) {
        _diver.sting(from);
        _air -= 0.15f;
    }

    void breathe() {
        if (_diver.at.y < sea.origin.y + 4)
            _air = KXMinf(_air + 0.02f, 1);
        else
            _air -= 1 / (60 * 20.0f); // enough for 20 seconds
    }

    void drawGauges() const {
        KXDrawRectFill({{0, 0}, {view.width, 18}}, ink);
        _font.print({8, 4}, foam, "Pearls: %d", _score);
        const KXColor air = _air < 0.25f ? KXMakeColori(232, 104, 120, 255) : foam;
        KXDrawRectFill({{212, 6}, {100 * KXMaxf(_air, 0), 6}}, air);
        KXDrawRect({{211, 5}, {102, 8}}, foam);
    }

    KXRandomGenerator _dice{KXRandomSeed()};
    Diver _diver;
    std::vector<Jelly> _jellies;
    std::vector<KXPoint> _pearls;
    KXSprite _pearl = spriteOf("pearl"), _jelly = spriteOf("jelly"); // all are drawn with these
    KXFont& _font = *KXCachedFont(file("font.ttf"), KXAliasModeTexture, 10);
    int _score = 0;
    float _air = 1; // 0 is none left
};

static void play() {
    KXWindow window("Deep Breath", view * 2, -1);
    window.setLogicalSize({view}); // whatever size the user gives the window
    window.setSharpText(-1);
    window.setRenderContext();
    const KXActions actions = bindings();
    Dive dive;

    KXSetLogicExact(-1);        // 60 steps a second on every display
    KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
    KXResetLogicLoop();
    while (!KXApplicationQuitRequested()) {
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            dive.step(push(actions));
            KXLogicUpdate();
        }
        window.setRenderContext();
        KXClear(KXMakeColori(196, 226, 232, 255)); // the sky
        dive.draw();
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
