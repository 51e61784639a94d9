// Drawing between steps. The logic takes ten steps a second here, so that it can be seen: on the left the
// ball is drawn where the last step has put it, on the right on its way from the step before.
#include "example.h"

#include <deque>

static void drawPanel(float left, const char* name, const std::deque<KXPoint>& steps, KXPoint ball) {
    KXDrawRectFill({{left, 30}, {184, 180}}, dusk);
    KXDrawRectFill({{left, 200}, {184, 10}}, teal);
    for (const KXPoint& step : steps) // where the last ones have put it
        KXDrawCircle({left + step.x, step.y}, 10, 32, withAlpha(paper, 0.4f));
    KXDrawCircleFill({left + ball.x, ball.y}, 10, 48, gold);
    KXUIGlobalFontPrint({left, 12}, paper, name);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Between two steps", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXPoint at = {20, 60}, before = at, speed = {9, 0};
        std::deque<KXPoint> steps;
        KXSetLogicInterval(10);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                before = at; // something that jumps elsewhere sets it as well
                speed.y += 4;
                at = {at.x + speed.x, at.y + speed.y};
                if (at.x < 16 || at.x > 168)
                    speed.x = -speed.x;
                if (at.y > 186) {
                    at.y = 186;
                    speed.y = -32;
                }
                steps.push_back(at);
                if (steps.size() > 12)
                    steps.pop_front();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            drawPanel(10, "where the last step has put it", steps, at);
            // How much of the next step's time has passed: from 0 to 1.
            drawPanel(206, "between the last two steps", steps,
                      KXParametricLine(KXLogicFraction(), before, at));
            KXUIGlobalFontPrint({10, 224}, gold, "10 steps a second, as many pictures as the display shows");
            example.frameDone(window);
            window.swapBuffers(); // waits for the display
            KXPostLogicLoop();
            if (window.verticalSync() == KXVerticalSyncOff)
                KXWaitForLogicStep(); // nothing else holds it back
        }
    }
    KXDeInit();
    return 0;
}
