// Half-transparent things in a texture: a layer with premultiplied colours looks as if its things were drawn
// straight into the window; one without comes out dark and thin.
#include "example.h"

#include <cmath>

static void drawMist(KXPoint at, int step) {
    for (int i = 0; i < 5; ++i) {
        const float sway = 6 * std::sin(step * 0.04f + i);
        KXDrawCircleFill({at.x + 34 + 13 * i + sway, at.y + 40 + 26 * (i % 2)}, 26, 48,
                         withAlpha(i % 2 ? paper : rose, 0.45f));
    }
    KXUIGlobalFontPrint({at.x + 20, at.y + 96}, withAlpha(paper, 0.8f), "a layer of mist");
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Layers", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture layer(124, 120), plain(124, 120);
        layer.setPremultiplied(-1); // the only difference
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
            for (KXTexture* texture : {&layer, &plain}) {
                texture->clear(); // all of it transparent
                texture->setRenderContext();
                drawMist(KXZeroPoint, step);
                texture->unsetRenderContext();
            }
            window.setRenderContext();
            KXClear(teal);
            for (int i = 0; i < 24; ++i)
                KXDrawRectFill({{0, i * 20.0f}, {400, 10}}, leaf);
            drawMist({6, 20}, step);
            layer.draw({.position = {138, 20}});
            plain.draw({.position = {270, 20}});
            // Only layers fade as one: things that lie on each other do not shine through.
            layer.draw({.position = {138, 140}, .tint = withAlpha(paper, 0.4f)});
            plain.draw({.position = {270, 140}, .tint = withAlpha(paper, 0.4f)});
            KXDrawRectFill({{0, 0}, {400, 20}}, night);
            KXUIGlobalFontPrint({8, 3}, paper, "straight");
            KXUIGlobalFontPrint({140, 3}, paper, "premultiplied layer");
            KXUIGlobalFontPrint({272, 3}, paper, "ordinary texture");
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
