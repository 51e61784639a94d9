// A player among boxes (arrow keys walk, Space jumps), a ball that bounces off them, and a ray that ends at
// the first one. None of them gets into a box, however fast it is.
#include "example.h"

#include <vector>

static const std::vector<KXRect> boxes = {
    {{0, 230}, {400, 20}},  {{0, 0}, {400, 10}},    {{0, 10}, {10, 220}},
    {{390, 10}, {10, 220}}, {{60, 180}, {90, 16}},  {{150, 150}, {16, 80}},
    {{220, 120}, {70, 16}}, {{330, 170}, {60, 16}}, {{70, 70}, {40, 40}}};

struct Player {
    KXRect body = {{90, 120}, {14, 22}};
    KXPoint speed = KXZeroPoint;
    bool stands = false;

    void step() {
        speed.x = 2 * (KXKeyHeld(KXKeyLeft) - KXKeyHeld(KXKeyRight)); // a key that is held is -1
        speed.y = stands && KXKeyWentDown(KXKeySpace) ? -6 : speed.y + 0.25f;
        const KXSlide slide = KXSlideRect(body, speed, boxes.data(), boxes.size());
        body.origin = slide.position;
        stands = slide.normal.y < 0;
        if (slide.normal.y != 0) // the floor, or a ceiling
            speed.y = 0;
    }
};

struct Ball {
    KXPoint centre = {200, 60}, speed = {3.1f, -1.4f};
    std::vector<KXPoint> trail = {};

    void step() {
        KXSweep first = {0, 1, centre + speed, KXZeroPoint};
        for (const KXRect& box : boxes) {
            const KXSweep sweep = KXSweepCircle(centre, 8, speed, box);
            if (sweep.hit && sweep.time < first.time)
                first = sweep;
        }
        centre = first.position;
        // What of its speed goes into the box turns round; the normal is zero where it hits nothing.
        speed -= first.normal * (2 * KXDot(speed, first.normal));
        trail.push_back(centre);
    }
};

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Collisions", {400, 250});
        Player player;
        Ball ball;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                player.step();
                ball.step();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXPoint eye = KXRectCentre(player.body), seen = ball.centre;
            for (const KXRect& box : boxes) {
                KXDrawRectFill(box, KXCircleOverlapsRect(ball.centre, 24, box) ? leaf : teal);
                seen = KXSweepRect({eye, KXZeroSize}, seen - eye, box).position; // a point that flies there
            }
            for (const KXPoint& point : ball.trail)
                KXDrawRectFill({point, {1, 1}}, withAlpha(paper, 0.5f));
            KXDrawLine(eye, seen, rose);
            KXDrawCircleFill(ball.centre, 8, 32, gold);
            KXDrawRectFill(player.body, player.stands ? paper : rose);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
