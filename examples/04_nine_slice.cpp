// A frame of any size from one small picture: its corners stay as they are, its edges and its middle stretch.
#include "example.h"

#include <cmath>

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A nine-slice panel", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXTexture panel(example.file("panel.png")); // 24 by 24 pixels, corners of 8 by 8
        KXTexture owl(example.file("owl.png"));
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

            panel.draw(38, 28, 1.0f, 3.0f, 0, 0, -1); // the picture itself, three times as large
            for (float line : {8 * 3.0f, 16 * 3.0f}) {
                KXDrawLine({38 + line, 22}, {38 + line, 106}, rose); // where it is cut
                KXDrawLine({32, 28 + line}, {116, 28 + line}, rose);
            }
            KXUIGlobalFontPrint({43, 110}, paper, "nine slices");

            panel.drawNineSlice({150, 20}, {230, 110}, 8);
            owl.draw(0, 0, 16, 16, 64, 64, 168, 44, 1, 1, 0, 0, 0);
            KXUIGlobalFontPrint({246, 42}, gold, 16, "The owl");
            KXUIGlobalFontPrint({246, 68}, paper, "\"Every panel");
            KXUIGlobalFontPrint({246, 86}, paper, "here is the same");
            KXUIGlobalFontPrint({246, 104}, paper, "small picture.\"");

            const float width = std::floor(225 + 65 * std::sin(static_cast<float>(step) / 40));
            panel.drawNineSlice({20, 150}, {width, 80}, 8);
            KXUIGlobalFontPrint({40, 182}, paper, "as wide as you like");
            KXDrawCircleFill({360, 160}, 22, 48, teal);
            panel.drawNineSlice({width + 30, 150}, {350 - width, 80}, 8, 0.6f); // and seen through
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
