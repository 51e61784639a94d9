// A window that is drawn in units of the game's own, whatever its size: resize it, press F for the whole
// display, 1 to 4 for the ways to fill it. The mouse is in the same units.
#include "example.h"

#include <cmath>

static const char* const names[] = {"letterbox", "stretch", "whole multiples", "expand"};

static void drawScene(KXSize size, int step) {
    KXClear(night);
    for (int i = 0; i < 40; ++i) // stars, each of one unit
        KXDrawRectFill({{std::fmod(i * 37.0f, size.width), i * i * 7 % 57 + 0.0f}, {1, 1}}, paper);
    KXDrawCircleFill({size.width - 26, 20}, 9, 24, gold);
    for (int i = 0; i < 2; ++i)
        for (float x = 0; x < size.width; x += 2) { // two ranges of hills
            const float height = std::floor(i ? 24 + 6 * std::sin(x / 9) : 34 + 9 * std::sin(x / 17 + 1));
            KXDrawRectFill({{x, size.height - height}, {2, height}}, i ? leaf : teal);
        }
    const float hop = std::abs(std::sin(step / 9.0f)) * 9; // a traveller
    KXDrawRectFill({{40, size.height - 38 - hop}, {6, 8}}, rose);
    KXDrawRectFill({{42, size.height - 42 - hop}, {4, 4}}, paper);
}

static void drawPointer(KXPoint at) {
    KXDrawRectFill({{at.x - 5, at.y}, {11, 1}}, gold);
    KXDrawRectFill({{at.x, at.y - 5}, {1, 11}}, gold);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Logical size", {400, 250}, -1);
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 8, KXZeroPoint);
        KXLogicalSize logical;
        logical.size = {160, 100};
        logical.scaling = KXScalingWholeMultiples;
        logical.bars = dusk;
        int step = 0, fullscreen = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                for (int i = 0; i < 4; ++i)
                    if (KXKeyWentDown(KXKey1 + i))
                        logical.scaling = static_cast<KXScaling>(i);
                if (KXKeyWentDown(KXKeyF))
                    window.setFullscreen((fullscreen = !fullscreen) ? KXFullscreenBorderless
                                                                    : KXFullscreenOff);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setLogicalSize(logical);
            window.setRenderContext();
            drawScene(window.logicalSize(), step);
            drawPointer({std::floor(KXMousePoint.x), std::floor(KXMousePoint.y)});
            KXUIGlobalFontPrint({4, 4}, paper,
                                KXTempString("%s: (%d, %d)", names[logical.scaling], KXMouseX, KXMouseY));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
