// Filled shapes: round corners, ellipses, slices and rings, polygons of any form, with colours that run.
#include "example.h"

#include <cmath>

static KXShapePaint running(KXColor color, KXColor endColor, KXPoint from, KXPoint to,
                            KXGradient gradient = KXGradientLinear) {
    KXShapePaint paint(color);
    paint.gradient = gradient;
    paint.endColor = endColor;
    paint.from = from;
    paint.to = to;
    paint.smooth = -1;
    return paint;
}

static void drawSky() {
    KXDrawRoundedRect({{0, 0}, {400, 250}}, 0, running(night, rose, {0, 40}, {0, 190}));
    KXDrawEllipse(
        {300, 120}, {90, 90},
        running(withAlpha(gold, 0.8f), withAlpha(gold, 0), {300, 120}, {300, 30}, KXGradientRadial));
    KXDrawEllipse({300, 120}, {28, 28}, running(paper, gold, {292, 110}, {292, 150}, KXGradientRadial));
}

static void drawHills() {
    const KXColor colors[] = {dusk, KXMakeColori(35, 60, 84, 255), KXMakeColori(22, 44, 52, 255)};
    for (int range = 0; range < 3; ++range) {
        KXPoint hills[42] = {{400, 250}, {0, 250}};
        for (int i = 0; i < 40; ++i)
            hills[i + 2] = {i * 400 / 39.0f,
                            170 + 20.0f * range - 16 * std::sin(i / (2.5f + range) + range * 2)};
        KXDrawPolygon(hills, 42, running(colors[range], night, {0, 160}, {0, 260}));
    }
}

static void drawPanel(float time) {
    KXShapePaint glass(withAlpha(night, 0.55f));
    glass.smooth = -1;
    KXDrawRoundedRect({{14, 14}, {150, 92}}, 16, glass);
    KXStroke frame(2, withAlpha(paper, 0.7f));
    frame.smooth = -1;
    KXDrawRoundedRect({{14, 14}, {150, 92}}, 16, frame);
    const KXColor colors[] = {teal, leaf, gold, rose};
    for (int i = 0; i < 4; ++i) { // a ring of slices
        KXShapePaint slice(colors[i]);
        slice.smooth = -1;
        KXDrawSector({58, 60}, 18, 34, time * 20 + 90 * i + 4, time * 20 + 90 * i + 86, slice);
    }
    KXPoint star[10];
    for (int i = 0; i < 10; ++i)
        star[i] = KXPoint{128, 60} + KXTurned({0, i % 2 ? -12.0f : -30.0f}, 36 * i - time * 10);
    KXDrawPolygon(star, 10, running(paper, gold, {128, 36}, {128, 88}));
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Shapes with colours that run", {400, 250});
        int steps = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++steps;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            drawSky();
            drawHills();
            drawPanel(steps / 30.0f);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
