// Fingers on a touch screen: each touch paints in a colour of its own, and two of them zoom and turn a
// picture.
#include "example.h"

#include <map>
#include <vector>

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Touch", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture fish(example.file("fish.png"));
        KXDrawOptions look = {.position = {200, 125}, .origin = {11, 8}, .scale = {4, 4}};
        std::vector<std::vector<KXPoint>> trails;
        std::map<int, std::size_t> trailOf; // by the numbers of fingers
        const KXColor colors[] = {gold, rose, leaf, teal};
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                std::vector<KXPoint> before, now; // of the fingers that stay down
                for (const KXFinger& finger : KXFingers()) {
                    if (finger.wentDown) {
                        trailOf[finger.number] = trails.size();
                        trails.push_back({finger.point});
                    }
                    if (!finger.held)
                        continue;
                    std::vector<KXPoint>& trail = trails[trailOf[finger.number]];
                    before.push_back(trail.back());
                    now.push_back(finger.point);
                    trail.push_back(finger.point);
                }
                if (now.size() == 2) { // as the line between them changes, so does the picture
                    const KXPoint line = now[1] - now[0], lineBefore = before[1] - before[0];
                    look.scale = look.scale * (KXLength(line) / KXMaxf(KXLength(lineBefore), 1));
                    look.rotation += KXAngle(line) - KXAngle(lineBefore);
                    look.position += (now[0] + now[1] - before[0] - before[1]) / 2;
                }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            fish.draw(look);
            for (std::size_t i = 0; i < trails.size(); ++i) {
                KXStroke line(4, withAlpha(colors[i % 4], 0.6f));
                line.join = KXJoinRound;
                line.cap = KXCapRound;
                KXDrawStroke(trails[i].data(), static_cast<int>(trails[i].size()), line);
            }
            for (const KXFinger& finger : KXFingers())
                if (finger.held)
                    KXDrawArc(finger.point, 16 + 12 * finger.pressure, 0, 360, {2, paper});
            KXUIGlobalFontPrint({8, 230}, paper, "two fingers turn the fish");
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
