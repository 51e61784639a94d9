// All curves that a movement can go along: time to the right, the way upward. Each is shown by one that goes
// there and back, and is exactly there with its last step.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Movements", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 8, KXZeroPoint);
        const char* names[] = {"quadratic", "cubic", "quartic", "quintic",
                               "sine",      "back",  "elastic", "bounce"};
        const char* manners[] = {"in", "out", "in-out"};
        const KXColor colors[] = {teal, rose, leaf};
        KXTween tweens[24];
        for (int i = 0; i < 24; ++i)
            tweens[i] =
                KXTween({.seconds = 2.6f,
                         .ease = static_cast<KXEase>(KXEaseInQuadratic + i), // those after the linear one
                         .repeats = -1,
                         .backAndForth = -1,
                         .pauseBeforeReturn = 0.5f,
                         .pauseBeforeRepeat = 0.5f});
        int arrivals = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                for (KXTween& tween : tweens)
                    tween.step();
                if (tweens[0].arrived()) // told once, in the step that comes to an end of the way
                    ++arrivals;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 24; ++i) {
                const int row = i % 3;
                const KXPoint corner = {33 + 46.0f * (i / 3), 74 + 68.0f * row}; // where it starts
                const auto at = [corner](float time, float way) {
                    return KXPoint{corner.x + 36 * time, corner.y - 36 * way};
                };
                KXDrawRect({{corner.x, corner.y - 36}, {36, 36}}, dusk);
                const auto curve = [i](float time) {
                    return KXEased(static_cast<KXEase>(KXEaseInQuadratic + i), time);
                };
                for (float time = 0; time < 1; time += 1 / 64.0f)
                    KXDrawLine(at(time, curve(time)), at(time + 1 / 64.0f, curve(time + 1 / 64.0f)),
                               colors[row]);
                const KXTween& tween = tweens[i];
                KXDrawCircleFill(at(tween.progress(), tween.value()), 3, 16, gold);
                KXDrawRectFill({at(1.06f, tween.value()), {5, 2}}, paper); // the movement itself
                if (row == 0)
                    KXUIGlobalFontPrint({corner.x - 4, 12}, paper, names[i / 3]);
                if (i < 3)
                    KXUIGlobalFontPrint({4, corner.y - 22}, colors[row], manners[row]);
            }
            KXUIGlobalFontPrint({33, 232}, gold, KXTempString("ends reached: %d", arrivals));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
