// Plays the scene in place of a person. Returns 0 when it went as it should.

#include "Controls.h"
#include "Scene.h"

#include <KobaltrixTest/KobaltrixTest.h>

#include <cstdio>

static void testScene(KXTest& test) {
    KXWindow window("Test", Scene::size);
    window.setRenderContext();
    Scene scene(std::string(KXExecutablePath) + "/assets");
    const Controls controls("");
    KXTestUser user(
        window, [&] { scene.step(controls.push()); }, [&] { scene.draw(); });
    scene.setLight({600, 60});

    user.hold(KXKeyRight);
    user.step(10);
    test.expect(scene.firefly().x == 120, "it flies four points in a step");
    user.hold(KXPositionS);
    user.step(1000);
    test.expect(scene.firefly().x == 640 - 64 && scene.firefly().y == 400 - 64, "it stays in the window");
    user.release(KXKeyRight);
    user.release(KXPositionS);

    KXTestPad pad;
    KXInitPads();
    user.step();
    pad.stick(KXPadLeftSide, {-1, 0});
    pad.hold(KXPadDPadUp);
    user.step(1000);
    test.expect(scene.firefly().x == 0 && scene.firefly().y == 0, "it stays in it on the other sides");
    pad.stick(KXPadLeftSide, {0, 0});
    pad.release(KXPadDPadUp);

    test.expect(KXTestGallery(PICTURES).compare(user.look(), "scene"));

    scene.setLight({200, 30});
    user.press(KXKeyRight, 20);
    test.expect(scene.score() == 0, "a light that is far away counts nothing");
    user.press(KXKeyRight, 20);
    test.expect(scene.score() >= 1, "a light that is touched counts");
}

int main(int, char** argv) {
    try {
        KXTest test(argv[0]); // no display, no sound, and time that is the test's
        testScene(test);
        return test.result();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s %s\n", error.what(), KXError());
        return 1;
    }
}
