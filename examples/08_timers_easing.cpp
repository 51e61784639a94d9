// Things that happen every so often, and movements that start or end gently. Both count logic steps: a game
// that stands still stops them, too.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Timers and easing", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        const char* names[] = {"linear", "ease in", "ease out", "ease in and out"};
        const KXColor colors[] = {paper, teal, rose, leaf};
        const KXEase eases[] = {KXEaseLinear, KXEaseInCubic, KXEaseOutCubic, KXEaseInOutCubic};
        KXTween ways[4];
        for (int i = 0; i < 4; ++i) // from 0 to 1 and back, for ever, with a pause at each end
            ways[i] = KXTween({.seconds = 2.5f,
                               .ease = eases[i],
                               .repeats = -1,
                               .backAndForth = -1,
                               .pauseBeforeReturn = 0.3f,
                               .pauseBeforeRepeat = 0.3f});
        KXTimer beat(60); // fires at every 60th tick
        int beats = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                for (KXTween& way : ways)
                    way.step();
                if (beat.tick())
                    ++beats;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 4; ++i) {
                const float y = 34 + 44.0f * i;
                KXUIGlobalFontPrint({20, y - 18}, colors[i], names[i]);
                KXDrawLine({24, y + 8}, {260, y + 8}, dusk);
                for (int ghost = 0; ghost <= 12; ++ghost) { // where it is at each twelfth of the time
                    const float x = 24 + 236 * KXEased(eases[i], static_cast<float>(ghost) / 12);
                    KXDrawCircleFill({x, y + 8}, 3, 16, dusk);
                }
                KXDrawCircleFill({24 + 236 * ways[i].value(), y + 8}, 9, 32, colors[i]);
                for (int x = 0; x < 80; ++x) { // the curve itself: to the right time, upward the way
                    const float from = KXEased(eases[i], static_cast<float>(x) / 80);
                    const float to = KXEased(eases[i], static_cast<float>(x + 1) / 80);
                    KXDrawLine({300.0f + x, y + 16 - 32 * from}, {301.0f + x, y + 16 - 32 * to}, colors[i]);
                }
                KXDrawRect({{298, y - 18}, {84, 36}}, dusk);
            }
            KXUIGlobalFontPrint({20, 206}, gold, "a timer of 60 steps");
            KXDrawRectFill({{24, 226}, {236, 8}}, dusk);
            KXDrawRectFill({{24, 226}, {236 * beat.progress(), 8}}, gold);
            for (int i = 0; i < 4; ++i)
                KXDrawCircleFill({309 + 21.0f * i, 230}, 7, 32, i == beats % 4 ? gold : dusk);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
