// Plays the scene in place of a person. Returns 0 when it went as it should.

#include "Controls.h"
#include "Memory.h"
#include "Scene.h"

#include <KobaltrixTest/KobaltrixTest.h>

#include <cstdio>

static void testScene(KXTest& test) {
    KXWindow window("Test", Scene::size);
    window.setRenderContext();
    Scene scene;
    const Controls controls(nullptr);
    KXTestUser user(
        window, [&] { scene.step(controls.push()); }, [&] { scene.draw(3); });
    Round round;
    round.light = {600, 60};
    scene.setRound(round);

    user.hold(KXKeyRight);
    user.step(10);
    test.expect(scene.round().firefly.x == 120, "it flies four points in a step");
    user.hold(KXPositionS);
    user.step(1000);
    test.expect(scene.round().firefly.x == 640 - 64 && scene.round().firefly.y == 400 - 64,
                "it stays in the window");
    user.release(KXKeyRight);
    user.release(KXPositionS);

    KXTestPad pad;
    KXInitPads();
    user.step();
    pad.stick(KXPadLeftSide, {-1, 0});
    pad.hold(KXPadDPadUp);
    user.step(1000);
    test.expect(scene.round().firefly.x == 0 && scene.round().firefly.y == 0,
                "it stays in it on the other sides");
    pad.stick(KXPadLeftSide, {0, 0});
    pad.release(KXPadDPadUp);

    test.expect(KXTestGallery(PICTURES).compare(user.look(), "scene"));

    round = scene.round();
    round.light = {200, 30};
    scene.setRound(round);
    user.press(KXKeyRight, 20);
    test.expect(scene.round().score == 0, "a light that is far away counts nothing");
    user.press(KXKeyRight, 20);
    test.expect(scene.round().score >= 1, "a light that is touched counts");
    round.stepsLeft = 2;
    scene.setRound(round);
    user.step();
    test.expect(!scene.isOver(), "a round goes on");
    user.step();
    test.expect(scene.isOver(), "until its time is over");
}

// In a folder of the test's own.
static void testMemory(KXTest& test) {
    Round left;
    left.firefly = {0.1f, 20};
    left.score = 7;
    {
        Memory memory;
        test.expect(memory.round().score == 0 && !memory.fullscreen(), "at first there is nothing");
        memory.keep(left);
        memory.setFullscreen(true);
        for (const int score : {3, 9, 4, 1, 5, 7})
            memory.enterScore(score);
    }
    const Memory memory;
    test.expect(memory.round().score == 7 && memory.round().firefly.x == 0.1f, "a round is gone on with");
    test.expect(memory.fullscreen(), "settings stay");
    test.expect(memory.best() == std::vector<double>{9, 7, 5, 4, 3}, "the best scores are kept");
}

int main(int, char** argv) {
    try {
        KXTest test(argv[0]); // no display, no sound, and time that is the test's
        testScene(test);
        testMemory(test);
        return test.result();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s %s\n", error.what(), KXError());
        return 1;
    }
}
