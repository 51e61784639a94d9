// A camera that follows an owl: softly, ahead of it, and never beyond the world. What is far away moves less,
// and each landing shakes the picture.
#include "example.h"

#include <cmath>
#include <tuple>

const KXRect world = {{0, 0}, {1600, 400}};

// A range of hills, higher where they are nearer.
static void drawHills(float height, float width, KXColor color) {
    for (float x = -width; x < world.size.width + width; x += width)
        KXDrawCircleFill({x + width / 2, world.size.height - height + width}, width, 64, color);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Following", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXSprite owl;
        owl.load(example.file("owl.spr"));
        owl.setAnimation("fly");
        KXPoint at = {200, 300}, speed = {3, 0};
        KXCamera camera;
        camera.centre = at;
        float shake = 0; // units
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                owl.poll();
                speed.y += 0.25f;
                at += speed;
                if (at.y > 340) { // off the ground again
                    at.y = 340;
                    speed.y = -7;
                    shake = 6;
                }
                if (at.x < 100 || at.x > 1500)
                    speed.x = -speed.x;
                const KXPoint ahead = at + KXPoint{speed.x * 30, 0}; // where it will be in half a second
                const KXSize seen = KXCameraBounds(camera).size;
                camera.centre = KXLerp(camera.centre, ahead, 0.08f);
                camera.centre = KXClampedToRect(camera.centre, KXGrownRect(world, seen * -0.5f));
                shake *= 0.85f;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(dusk);
            KXDrawCircleFill({330, 50}, 20, 48, gold); // so far away that it does not move at all
            for (const auto& [share, height, width, color] :
                 {std::tuple{0.2f, 210.0f, 190.0f, KXMakeColori(58, 66, 110, 255)},
                  {0.5f, 150.0f, 120.0f, KXMakeColori(52, 100, 122, 255)},
                  {1.0f, 70.0f, 60.0f, leaf}}) {
                KXCamera layer = camera; // a copy shakes; the camera itself knows nothing of it
                layer.centre.x = 200 + (camera.centre.x - 200) * share;
                layer.centre.y += shake * std::sin(step * 2.0f);
                KXPushCamera(layer);
                drawHills(height, width, color);
                if (share == 1)
                    owl.draw({.flip = speed.x < 0 ? KXFlipLeftRight : KXFlipNone,
                              .position = at,
                              .origin = {12, 20},
                              .scale = {2, 2}});
                KXPopCamera();
            }
            KXUIGlobalFontPrint({8, 6}, paper, KXTempString("%.0f of %.0f", at.x, world.size.width));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
