// Plays the scene without a person. Returns 0 when it went as it should.

#include "Scene.h"

#include <cstdio>

static int failures = 0;

static void expect(bool fact, const char* what) {
    if (!fact) {
        std::printf("Not so: %s\n", what);
        ++failures;
    }
}

static void fly(Scene& scene, KXPoint push, int steps) {
    for (int i = 0; i < steps; ++i)
        scene.step(push);
}

static void testScene(const std::string& assets) {
    KXWindow window("Test", Scene::size);
    window.setRenderContext();
    Scene scene(assets);
    scene.setLight({-100, -100});

    fly(scene, {1, 0}, 10);
    expect(scene.firefly().x == 120, "it flies four points in a step");
    fly(scene, {1, 1}, 1000);
    expect(scene.firefly().x == 640 - 64 && scene.firefly().y == 400 - 64, "it stays in the window");
    fly(scene, {-1, -1}, 1000);
    expect(scene.firefly().x == 0 && scene.firefly().y == 0, "it stays in the window on the other sides");

    scene.setLight({200, 30});
    fly(scene, {1, 0}, 20);
    expect(scene.score() == 0, "a light that is far away counts nothing");
    fly(scene, {1, 0}, 20);
    expect(scene.score() >= 1, "a light that is touched counts");

    scene.draw();
    expect(window.saveBuffer("scene.bmp", 0) != 0, "its picture can be saved");
}

int main(int, char** argv) {
    if (!KXInit(argv[0]))
        return 1;
    try {
        testScene(std::string(KXExecutablePath) + "/assets");
    } catch (const std::exception& error) {
        std::printf("%s %s\n", error.what(), KXError());
        ++failures;
    }
    KXDeInit();
    return failures != 0;
}
