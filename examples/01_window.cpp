// A window, and the loop that every game has: as many logic steps as are due, then one picture.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0])) // before everything else
        return example.failed();
    {
        // The window's corner is (0, 0), x grows to the right, y grows downward.
        KXWindow window("A window", {400, 250});
        const KXColor colors[] = {gold, rose, teal, leaf, paper};
        KXPoint balls[5], speeds[5];
        for (int i = 0; i < 5; ++i) {
            balls[i] = {60 + 60.0f * i, 40 + 20.0f * i};
            speeds[i] = {1.5f + 0.5f * i, 0};
        }
        long second = -1;
        KXSetLogicExact(-1); // 60 steps a second, whatever the display
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) { // until the window is closed
            KXPreLogicLoop();
            while (KXLogicLoop()) { // a step is due
                for (int i = 0; i < 5; ++i) {
                    const float radius = 12 + 4.0f * i;
                    speeds[i].y += 0.15f; // they fall
                    balls[i].x += speeds[i].x;
                    balls[i].y += speeds[i].y;
                    if (balls[i].x < radius || balls[i].x > 400 - radius)
                        speeds[i].x = -speeds[i].x;
                    if (balls[i].y > 220 - radius && speeds[i].y > 0)
                        speeds[i].y = -speeds[i].y;
                }
                KXLogicUpdate();
                example.stepDone(); // this and frameDone() serve --screenshot: see example.h
            }
            window.setRenderContext(); // draw into this window
            KXClear(night);
            KXDrawRectFill({{0, 220}, {400, 30}}, dusk);
            for (int i = 0; i < 5; ++i) {
                const float radius = 12 + 4.0f * i;
                KXDrawRectFill({{balls[i].x - radius, 222}, {2 * radius, 4}}, night); // its shadow
                KXDrawCircleFill(balls[i], static_cast<int>(radius), 48, colors[i]);
            }
            example.frameDone(window);
            window.swapBuffers(); // shows what was drawn
            KXFPSTick();
            KXPostLogicLoop();
            KXWaitForLogicStep();
            if (second != KXElapsedTime()) {
                second = static_cast<long>(KXElapsedTime());
                window.setTitle(KXTempString("A window: %d frames a second", KXFPS()));
            }
        }
    } // the window closes here, before the library ends
    KXDeInit();
    return 0;
}
