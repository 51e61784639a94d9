// Pictures made in code: a ship of shapes, its mirror image and larger ones, a planet made pixel by pixel,
// and smoke that changes with every step.
#include "example.h"

#include <cmath>

static KXImage makeShip() {
    KXImage ship(16, 16); // transparent
    ship.drawRectFill({{3, 6}, {8, 5}}, teal);
    ship.drawCircleFill({10, 8.5f}, 4, paper);
    ship.drawCircleFill({11, 8}, 2, night);
    ship.fill({{1, 4}, {4, 4}}, rose);
    ship.drawLine({2, 3}, {7, 6}, gold);
    return ship;
}

static KXImage makePlanet(int side) {
    KXImage planet(side, side);
    for (int y = 0; y < side; ++y) {
        KXPixel* row = planet.row(y); // the fast way to touch every pixel
        for (int x = 0; x < side; ++x) {
            const KXPoint at = {(2 * x + 1.0f) / side - 1, (2 * y + 1.0f) / side - 1};
            const float light = 0.75f - KXDistance(at, {-0.4f, -0.4f}) / 2;
            const float band = std::sin(9 * at.y + 2 * at.x * at.x) / 4;
            if (KXSquaredLength(at) < 1)
                row[x] = KXPixelOf({light * (1.2f + band), light, light * (0.9f - band), 1});
        }
    }
    return planet;
}

static void rise(KXImage& smoke, int step) {
    smoke.paste(smoke, 0, -1);
    for (int x = 0; x < smoke.width(); ++x) {
        const float puff = std::sin(x * 0.5f + step * 0.11f) * std::sin(x * 0.13f - step * 0.07f);
        smoke.setPixel(x, smoke.height() - 1, withAlpha(gold, puff)); // less than 0 is 0
    }
    for (int i = 0; i < smoke.width() * smoke.height(); ++i) // the rows follow each other
        smoke.row(0)[i].a -= smoke.row(0)[i].a / 24;
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Images in memory", {400, 250});
        const KXImage ship = makeShip();
        KXTexture natural(ship), mirrored(ship.flipped(KXFlipLeftRight)), planet(makePlanet(90)),
            smooth(ship);
        KXTexture large(ship.scaled(64, 64, KXFilterLinear));
        smooth.setFilter(KXFilterLinear);
        smooth.setWrap(KXWrapClamp); // each edge keeps to its own pixels
        KXImage smoke(100, 60);
        KXTexture cloud(smoke);
        int steps = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                rise(smoke, ++steps);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            cloud.setImage(smoke); // setPart() is for a rectangle of it
            cloud.draw(0, 0, 100, 60, 400, 240, 0, 10, 0.8f, 1.0f, 0, KXFlipNone, 0);
            planet.draw(295, 15, -1);
            natural.draw(20, 20, -1);
            mirrored.draw(50, 20, -1);
            natural.draw(20, 60, 1.0f, 5.0f, 0, KXFlipNone, -1);
            smooth.draw(110, 60, 1.0f, 5.0f, 0, KXFlipNone, -1); // the graphics card scales
            large.draw(210, 68, -1);                             // the image was scaled
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
