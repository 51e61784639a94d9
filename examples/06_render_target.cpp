// Drawing into a texture instead of the window: a town is drawn once, and twice seen, the second time in
// water.
#include "example.h"

#include <cmath>

static void drawTown(int step) {
    KXClear(night);
    for (int i = 0; i < 60; ++i)
        KXDrawRectFill({{static_cast<float>(i * 137 % 400), static_cast<float>(i * 53 % 110)}, {1, 1}},
                       paper);
    KXDrawCircleFill({320, 40}, 20, 48, gold);
    for (int house = 0; house < 14; ++house) {
        const float x = house * 30.0f - 8, height = 36.0f + house * 47 % 64;
        KXDrawRectFill({{x, 150 - height}, {28, height}}, house % 3 ? dusk : KXMakeColori(58, 52, 100, 255));
        for (int row = 0; row < static_cast<int>(height) / 14; ++row)
            for (int column = 0; column < 2; ++column) // somebody is awake, somebody goes to bed
                if ((house * 7 + row * 5 + column * 3 + step / 90) % 4 == 0)
                    KXDrawRectFill({{x + 6 + column * 10, 156 - height + row * 14}, {5, 7}}, gold);
    }
    const KXPoint boat = {static_cast<float>(step % 460) - 30, 144};
    KXDrawTriangleFill({boat.x, boat.y - 26}, {boat.x, boat.y - 4}, {boat.x + 16, boat.y - 4}, paper);
    KXDrawTriangleFill({boat.x - 14, boat.y - 2}, {boat.x + 20, boat.y - 2}, {boat.x + 3, boat.y + 12}, rose);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A render target", {400, 250});
        KXTexture town(400, 150); // blank; a texture belongs to the window that was current when it was made
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                KXLogicUpdate();
                example.stepDone();
            }
            town.setRenderContext(); // everything is drawn into the texture now
            drawTown(step);
            town.unsetRenderContext();

            window.setRenderContext();
            town.setTint(KXMakeColor(1, 1, 1, 1));
            town.draw(0, 0, 0);
            KXDrawRectFill({{0, 150}, {400, 100}}, teal);
            town.setTint(KXMakeColor(0.75f, 0.9f, 1, 1));
            for (int y = 0; y < 100; y += 2) { // the water: strips of it, from the bottom up, shifted
                const float depth = static_cast<float>(y) / 100, wave = static_cast<float>(step) / 12;
                const int row = 148 - y,
                          shift = static_cast<int>(std::lround(6 * depth * std::sin(y / 4.0f + wave)));
                town.draw(0, row, 400, row + 2, 412, 2, shift - 6, 150 + y, 0.85f - 0.4f * depth, 1, 0, 0, 0);
            }
            KXDrawRectFill({{0, 150}, {400, 1}}, withAlpha(paper, 0.5f));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
