// Ten thousand sparks in a few draw calls. B turns the batch off and on: the picture stays the same.
#include "example.h"

#include <cmath>

const int count = 10000;

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A draw batch", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture spark(example.file("spark.png")); // 8 by 8 pixels, white
        const KXColor colors[] = {gold, paper, rose, teal, leaf};
        bool batch = true;
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                if (KXKeyWentDown(KXKeyB))
                    batch = !batch;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            if (batch)
                KXBeginDrawBatch(); // collects from here on
            for (int i = 0; i < count; ++i) {
                // A spiral galaxy: the nearer to the middle, the faster.
                const float part = static_cast<float>(i) / count, distance = 172 * std::sqrt(part);
                const float angle = i * 2.39996f + step * (0.012f - 0.008f * part);
                const float wave = 1 + 0.12f * std::sin(5 * angle + 14 * part);
                spark.setTint(colors[i * 5 / count]);
                spark.draw(static_cast<int>(196 + distance * wave * std::cos(angle)),
                           static_cast<int>(113 + 0.58f * distance * wave * std::sin(angle)), 0.5f, 1.0f, 0,
                           0, 0);
            }
            if (batch)
                KXEndDrawBatch(); // draws all of it

            const KXDrawStatistics frame = KXLastDrawStatistics(); // of the frame before
            KXDrawRectFill({{0, 226}, {400, 24}}, withAlpha(night, 0.85f));
            KXUIGlobalFontPrint({12, 231}, paper,
                                KXTempString("batch %s: %d quads, %d draw calls, %d textures bound",
                                             batch ? "on" : "off", frame.quads, frame.drawCalls,
                                             frame.textureBinds));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
