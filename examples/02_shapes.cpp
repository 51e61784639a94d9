// Rectangles, circles, triangles and lines. What is drawn later lies above; opacity mixes it with what is
// there.
#include "example.h"

static void drawTree(float x, float y, float height) {
    KXDrawRectFill({{x - 4, y - 12}, {8, 12}}, rose); // the trunk
    for (int part = 0; part < 3; ++part) {
        const float base = y - 10 - part * height / 4, half = height / 3 - part * height / 14;
        KXDrawTriangleFill({x, base - height / 2}, {x - half, base}, {x + half, base},
                           part % 2 ? teal : KXMakeColori(58, 128, 140, 255));
    }
}

static void drawHouse(int step) {
    for (int i = 0; i < 6; ++i) { // rings of smoke rise, grow and fade
        const float age = static_cast<float>((step + 40 * i) % 240) / 240;
        KXDrawCircle({259 + 24 * age * age, 104 - 80 * age}, 3 + static_cast<int>(10 * age), 24,
                     withAlpha(paper, 0.8f * (1 - age)));
    }
    KXDrawRectFill({{252, 106}, {14, 30}}, rose); // the chimney, the walls, the roof, the door
    KXDrawRectFill({{200, 150}, {90, 60}}, paper);
    KXDrawTriangleFill({190, 150}, {245, 105}, {300, 150}, rose);
    KXDrawRectFill({{262, 172}, {18, 38}}, dusk);
    KXDrawRectFill({{212, 166}, {32, 26}}, gold);
    KXDrawRect({{211, 165}, {34, 28}}, dusk);
    KXDrawLine({228, 166}, {228, 192}, dusk);
    KXDrawLine({212, 179}, {244, 179}, dusk);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Shapes", {400, 250});
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
            for (int i = 0; i < 40; ++i) { // stars, some of which twinkle
                const float x = static_cast<float>(i * 137 % 400), y = static_cast<float>(i * 61 % 140);
                const float size = (step / 20 + i) % 9 ? 1 : 2;
                KXDrawRectFill({{x, y}, {size, size}}, withAlpha(paper, i % 3 ? 0.5f : 0.9f));
            }
            KXDrawCircleFill({78, 62}, 30, 64, gold);
            KXDrawCircleFill({90, 54}, 26, 64, night); // makes it a crescent
            KXDrawTriangleFill({-60, 220}, {60, 110}, {190, 220}, dusk);
            KXDrawTriangleFill({90, 220}, {230, 80}, {420, 220}, dusk);
            KXDrawTriangle({90, 220}, {230, 80}, {420, 220}, withAlpha(teal, 0.4f));
            KXDrawRectFill({{0, 208}, {400, 42}}, leaf);
            drawHouse(step);
            drawTree(46, 222, 80);
            drawTree(112, 232, 60);
            drawTree(342, 228, 96);
            drawTree(380, 240, 56);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
