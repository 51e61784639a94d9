// A world that is larger than the window, seen by two cameras: one follows, zooms and tilts, one looks at all
// of it. The mouse points into the world.
#include "example.h"

#include <cmath>

constexpr float side = 1200;

static void drawWorld(KXTexture& fish, KXPoint hero, float heading) {
    for (int i = 0; i < 24 * 24; ++i) { // tiles; what a camera does not show costs next to nothing
        const KXPoint tile = {i % 24 * 50.0f, i / 24 * 50.0f};
        KXDrawRectFill({tile, {50, 50}}, (i + i / 24) % 2 ? dusk : KXMakeColori(36, 60, 92, 255));
        if (i * 7 % 5 == 0)
            KXDrawCircleFill({tile.x + 25, tile.y + 25}, 6 + i % 9, 24, i % 3 ? leaf : teal);
    }
    KXDrawRect({{0, 0}, {side, side}}, gold);
    fish.draw({.position = hero, .origin = {11, 8}, .rotation = heading, .scale = {-2, 2}});
    KXUIGlobalFontPrint({hero.x - 20, hero.y - 34}, paper, "hero");
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Cameras", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture fish(example.file("fish.png"));
        int step = 60;
        KXPoint hero = {};
        KXCamera follows, overview;
        overview.centre = {side / 2, side / 2};
        overview.area = {{296, 10}, {94, 94}};
        overview.zoom = 94 / side;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                const float angle = step * 0.012f;
                hero = {side / 2 + 450 * std::cos(angle), side / 2 + 380 * std::sin(2 * angle)};
                follows.centre = hero;
                follows.zoom = 1.3f + 0.5f * std::sin(step * 0.02f);
                follows.rotation = 12 * std::sin(step * 0.03f);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            const float heading = 20 * std::cos(step * 0.024f);
            KXBeginDrawBatch();
            KXPushCamera(follows);
            drawWorld(fish, hero, heading);
            const KXPoint mouse = KXCameraToWorld(follows, KXMousePoint);
            KXDrawCircle(mouse, 10, 32, rose);
            KXPopCamera();

            KXDrawRectFill({{294, 8}, {98, 98}}, paper);
            KXPushCamera(overview); // fills a part of the window, and draws in that alone
            drawWorld(fish, hero, heading);
            const KXRect seen = KXCameraBounds(follows); // what the other one shows, with its tilt
            KXDrawRectFill(seen, withAlpha(paper, 0.4f));
            KXPopCamera();
            KXEndDrawBatch();
            KXDrawRectFill({{0, 230}, {400, 20}}, night);
            const KXDrawStatistics last = KXLastDrawStatistics();
            KXUIGlobalFontPrint(
                {8, 233}, paper,
                KXTempString("%d left out, %d drawn, in %d calls", last.culled, last.quads, last.drawCalls));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
