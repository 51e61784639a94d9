// A picture from a file, drawn in every way there is.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A texture", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        // KXSetTextureMode(0) before this would smooth the pixels when they are enlarged.
        KXTexture fish(example.file("fish.png")); // 22 by 16 pixels
        const char* names[] = {"as it is",    "scaled", "turned",     "mirrored",
                               "upside down", "tinted", "half there", "a part"};
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
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 8; ++i) {
                const KXPoint cell = {static_cast<float>(i % 4 * 98 + 5),
                                      static_cast<float>(i / 4 * 122 + 6)};
                KXDrawRectFill({cell, {94, 116}}, dusk);
                const int width = static_cast<int>(KXUIGlobalFontStringBounds(names[i]).width);
                KXUIGlobalFontPrint({cell.x + (94 - width) / 2, cell.y + 92}, paper, names[i]);
                const int x = static_cast<int>(cell.x) + 14, y = static_cast<int>(cell.y) + 25;
                switch (i) {
                case 0:
                    fish.draw(x + 22, y + 16, 0); // where its top-left corner goes
                    break;
                case 1: // where, opacity, scale, degrees, flips, and -1 to have those count
                    fish.draw(x, y, 1.0f, 3.0f, 0, 0, -1);
                    break;
                case 2:
                    fish.draw(x, y, 1.0f, 3.0f, step / 2, 0, -1); // about its middle, clockwise
                    break;
                case 3:
                    fish.draw(x, y, 1.0f, 3.0f, 0, KXFlipLeftRight, -1);
                    break;
                case 4:
                    fish.draw(x, y, 1.0f, 3.0f, 0, KXFlipTopBottom, -1);
                    break;
                case 5:
                    fish.setTint(KXMakeColor(0.6f, 0.6f, 1, 1)); // every draw is multiplied by it from now on
                    fish.draw(x, y, 1.0f, 3.0f, 0, 0, -1);
                    fish.setTint(KXMakeColor(1, 1, 1, 1));
                    break;
                case 6:
                    fish.draw(x, y, 0.4f, 3.0f, 0, 0, -1);
                    break;
                default: // the pixels from (12, 3) to (22, 12), over an area of 66 by 48
                    fish.draw(12, 3, 22, 12, 66, 48, x, y, 1, 1, 0, 0, 0);
                }
            }
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
