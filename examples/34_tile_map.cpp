// A map from the editor Tiled: it is drawn by what is visible, its water moves, coins are objects, and the
// walker (arrow keys, Space jumps) stands on its tiles. By itself it runs to the right and jumps at walls.
#include "example.h"

#include <cmath>
#include <set>

struct Walker {
    KXRect body = {{0, 0}, {12, 20}};
    KXPoint speed = {0, 0};
    bool stands = false, runs = true;

    void step(const KXMap& map, int ground, double gravity) {
        const int left = KXKeyHeld(KXKeyLeft), right = KXKeyHeld(KXKeyRight);
        runs = runs && !left && !right;
        speed.x = runs || right ? 1.5f : left ? -1.5f : 0;
        speed.y += gravity;
        const KXSlide slide = map.slide(body, speed, ground);
        body.origin = slide.position;
        if (slide.normal.y != 0)
            speed.y = 0;
        stands = slide.normal.y < 0;
        if (stands && (KXKeyWentDown(KXKeySpace) || (runs && slide.normal.x != 0)))
            speed.y = -5;
    }
};

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A tile map", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXMap map(example.file("meadow.tmj"));
        const int ground = map.layerNamed("ground"), plants = map.layerNamed("plants");
        const double gravity = KXFindMapProperty(map.properties(), "gravity")->number;
        Walker walker;
        walker.body.origin = map.objectNamed("start")->rect.origin;
        std::set<int> coins; // those that were taken
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                walker.step(map, ground, gravity);
                map.advance(1000.0f / 60);
                for (const KXMapObject& object : map.objects())
                    if (object.type == "coin" && KXRectsOverlap(object.rect, walker.body))
                        coins.insert(object.id);
                KXLogicUpdate();
                example.stepDone();
            }
            // What is seen, in whole pixels, and never beyond the edges of the map.
            const KXPoint end = {map.size().width * 16 - 400, map.size().height * 16 - 250};
            const KXPoint eye = KXRectCentre(walker.body) - KXPoint{150, 130};
            const KXRect part = {{std::floor(KXMaxf(0, KXMinf(eye.x, end.x))), end.y}, {400, 250}};
            window.setRenderContext();
            KXClear(map.background());
            map.drawLayer(map.layerNamed("hills"), part, {0, 0});
            map.drawLayer(plants, part, {0, 0});
            KXDrawRectFill(KXMovedRect(walker.body, -part.origin), walker.stands ? paper : rose);
            map.drawLayer(ground, part, {0, 0});
            for (const KXMapObject& object : map.objects())
                if (object.type == "coin" && !coins.count(object.id))
                    KXDrawCircleFill(KXRectCentre(object.rect) - part.origin, 5, 24, gold);
            KXUIGlobalFontPrint({10, 16}, paper, KXTempString("%d coins", static_cast<int>(coins.size())));
            const KXPoint feet = KXRectCentre(walker.body) + KXPoint{0, 12};
            KXUIGlobalFontPrint({10, 32}, teal, map.tileType(map.tileAt(plants, feet)));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
