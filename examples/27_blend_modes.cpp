// How colours mix: glows that add up, light that falls on a picture, and a name for each way.
#include "example.h"

#include <cmath>

/// White in its middle and transparent at its edge.
static void drawGlow(KXTexture& spark, KXPoint at, float radius, KXColor tint, KXBlendMode blend) {
    for (int ring = 6; ring > 0; --ring) {
        const float side = radius * ring / 24;
        spark.draw({.position = at,
                    .origin = {4, 4},
                    .rotation = ring * 15.0f,
                    .scale = {side, side},
                    .tint = withAlpha(tint, 0.3f),
                    .blend = blend});
    }
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Blend modes", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture spark(example.file("spark.png")), owl(example.file("owl.png"));
        const struct {
            const char* name;
            KXBlendMode mode;
        } rows[] = {{"alpha", KXBlendAlpha},   {"add", KXBlendAdd},         {"multiply", KXBlendMultiply},
                    {"screen", KXBlendScreen}, {"replace", KXBlendReplace}, {"erase", KXBlendErase}};
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
            for (int i = 0; i < 6; ++i) {
                const KXPoint cell = {i % 3 * 132.0f + 6, i / 3 * 122.0f + 6};
                for (int stripe = 0; stripe < 6; ++stripe)
                    KXDrawRectFill({{cell.x + stripe * 21, cell.y}, {21, 114}}, stripe % 3 == 0   ? dusk
                                                                                : stripe % 3 == 1 ? teal
                                                                                                  : gold);
                window.setClipTo({cell, {126, 114}});
                const float swing = 30 * std::sin(step * 0.04f + i);
                drawGlow(spark, {cell.x + 44 + swing, cell.y + 52}, 30, rose, rows[i].mode);
                KXPushBlendMode(rows[i].mode); // for all that follows: shapes, text, sprites
                owl.draw(
                    {.position = {cell.x + 70, cell.y + 26}, .scale = {3, 3}, .source = {{32, 0}, {16, 16}}});
                KXDrawCircleFill({cell.x + 30 - swing / 2, cell.y + 78}, 20, 40, withAlpha(leaf, 0.5f));
                KXPopBlendMode();
                window.unsetClip();
                KXDrawRectFill({{cell.x, cell.y + 96}, {126, 18}}, withAlpha(night, 0.8f));
                KXUIGlobalFontPrint({cell.x + 6, cell.y + 99}, paper, rows[i].name);
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
