// Drawing that ends at an edge: the land outside, seen through the windows of a train.
#include "example.h"

// Draws the land over the whole window, nearer things faster.
static void drawLand(int step) {
    KXClear(night);
    for (int i = 0; i < 50; ++i)
        KXDrawRectFill({{static_cast<float>(i * 137 % 400), static_cast<float>(i * 53 % 130)}, {1, 1}},
                       paper);
    KXDrawCircleFill({300, 74}, 22, 48, gold);
    for (int i = 0; i < 6; ++i) {
        const float x = static_cast<float>(i * 100 - step / 2 % 100);
        KXDrawTriangleFill({x - 90, 180}, {x, 90 + 25.0f * (i % 2)}, {x + 90, 180}, dusk);
    }
    KXDrawRectFill({{0, 150}, {400, 60}}, teal);
    for (int i = 0; i < 12; ++i) {
        const float x = static_cast<float>(i * 40 - 2 * step % 40);
        KXDrawTriangleFill({x, 118}, {x - 12, 162}, {x + 12, 162}, leaf);
    }
    for (int i = 0; i < 3; ++i) { // poles and their wire
        const float x = static_cast<float>(i * 240 - 6 * step % 240);
        KXDrawRectFill({{x, 40}, {5, 160}}, rose);
    }
    KXDrawLine({0, 52}, {400, 52}, rose);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Clipping", {400, 250});
        const KXRect panes[] = {{{24, 30}, {166, 140}}, {{210, 30}, {166, 140}}};
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
            KXClear(paper); // the wall
            KXDrawRectFill({{0, 190}, {400, 60}}, rose);
            for (int x = 8; x < 400; x += 16)
                KXDrawLine({static_cast<float>(x), 196}, {static_cast<float>(x), 250},
                           withAlpha(night, 0.2f));
            for (const KXRect& pane : panes) {
                const float x = pane.origin.x, y = pane.origin.y;
                KXDrawRectFill({{x - 8, y - 8}, {pane.size.width + 16, pane.size.height + 16}}, gold);
                window.setClipTo(pane); // from here on nothing is drawn outside of it
                drawLand(step);
                window.unsetClip(); // until here
                KXDrawTriangleFill({x + 20, y}, {x + 60, y}, {x, y + 80},
                                   withAlpha(paper, 0.08f)); // the glass
                KXDrawRect(pane, night);
            }
            KXDrawRectFill({{0, 182}, {400, 8}}, gold);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
