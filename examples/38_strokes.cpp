// Lines of any width: joins, caps, curves, arcs, sharp and smooth edges, and no darker where they overlap.
#include "example.h"

#include <cmath>

static KXStroke strokeOf(float width, KXColor color, KXLineJoin join = KXJoinRound,
                         KXLineCap cap = KXCapRound) {
    KXStroke stroke(width, color);
    stroke.join = join;
    stroke.cap = cap;
    stroke.smooth = -1;
    return stroke;
}

static void drawJoins() {
    const KXColor colors[] = {rose, gold, leaf};
    for (int i = 0; i < 3; ++i) { // each with the cap of the same number
        const float x = 16 + 82 * i;
        const KXPoint points[] = {{x, 70}, {x + 26, 24}, {x + 50, 66}};
        KXDrawStroke(points, 3, strokeOf(13, colors[i], KXLineJoin(i), KXLineCap(i)));
        KXDrawStroke(points, 3, strokeOf(1, night));
    }
}

static void drawStar(KXPoint centre, float turn, int smooth) {
    KXPoint points[5];
    for (int i = 0; i < 5; ++i)
        points[i] = centre + KXTurned({0, -28}, turn + 144 * i);
    KXStroke stroke = strokeOf(7, withAlpha(teal, 0.6f), KXJoinMiter);
    stroke.closed = -1;
    stroke.smooth = smooth; // where it crosses itself it is no darker
    KXDrawStroke(points, 5, stroke);
}

static void drawCurves(float time) {
    KXPoint river[9];
    for (int i = 0; i < 9; ++i)
        river[i] = {16 + 46.0f * i, 150 + 16 * std::sin(i * 1.7f + time)};
    KXDrawSpline(river, 9, strokeOf(15, dusk));
    KXDrawSpline(river, 9, strokeOf(9, teal));
    KXDrawCurve({20, 232}, {90, 150}, {120, 260}, {190, 190}, strokeOf(4, paper));
    for (int i = 0; i < 4; ++i) // dials
        KXDrawArc({244 + 42.0f * i, 212}, 14, -90, -90 + 70 + 65 * i + 12 * std::sin(time + i),
                  strokeOf(6, gold));
    for (int i = 0; i < 12; ++i)
        KXDrawStroke({20 + 16.0f * i, 240}, {28 + 16.0f * i, 228}, strokeOf(0.25f * (i + 1), rose));
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Strokes", {400, 250});
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
            KXClear(night);
            drawJoins();
            drawStar({290, 48}, steps / 3.0f, 0);
            drawStar({362, 48}, steps / 3.0f, -1);
            drawCurves(steps / 30.0f);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
