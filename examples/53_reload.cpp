// A picture that changes while the game shows it: what is painted on the left goes into flower.png, and half
// a second later all flowers of the meadow have it. Any program may paint the file; a sprite file is followed
// the same way.
#include "example.h"

#include <cmath>

namespace {
const char* const file = "flower.png";
const KXRect canvas = {{20, 26}, {132, 192}};
constexpr float zoom = 12; // of a picture of 11 by 16 pixels

KXImage firstFlower() {
    KXImage flower(11, 16);
    flower.drawLine({5, 8}, {5, 15}, leaf);
    flower.drawLine({6, 12}, {8, 10}, leaf);
    flower.drawCircleFill({5.5f, 5.5f}, 4, rose);
    return flower;
}

void drawMeadow(KXTexture& flower) {
    KXDrawRectFill({{172, 26}, {208, 192}}, dusk);
    KXDrawRectFill({{172, 140}, {208, 78}}, teal);
    for (int i = 0; i < 11; ++i) {
        KXDrawOptions options;
        options.position = {194 + i * 71 % 165 * 1.0f, 128 + 8.0f * i};
        options.origin = {5.5f, 16}; // stands there
        options.scale = {2.0f + 0.2f * i, 2.0f + 0.2f * i};
        options.rotation = i * 37 % 25 - 12.0f;
        options.flip = i % 2 ? KXFlipLeftRight : KXFlipNone;
        flower.draw(options);
    }
}
} // namespace

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Reload", {400, 250});
        KXImage painted = firstFlower();
        if (!painted.writeToPNG(file))
            return example.failed();
        KXReloadChangedFiles(-1);
        KXTexture* flower = KXTextureCacheLoad(file); // stays the same object
        KXTexture preview(painted);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop(); // looks at the file, four times a second
            while (KXLogicLoop()) {
                const int x = std::floor((KXMousePoint.x - canvas.origin.x) / zoom),
                          y = std::floor((KXMousePoint.y - canvas.origin.y) / zoom);
                if (KXMouseHeld(KXMouseLeft) && painted.setPixel(x, y, gold))
                    preview.setImage(painted);
                if (KXMouseWentUp(KXMouseLeft))
                    painted.writeToPNG(file);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXDrawRectFill(canvas, dusk);
            KXDrawOptions enlarged;
            enlarged.position = canvas.origin;
            enlarged.scale = {zoom, zoom};
            preview.draw(enlarged);
            for (float x = 0; x <= canvas.size.width; x += zoom)
                KXDrawRectFill({{canvas.origin.x + x, canvas.origin.y}, {1, canvas.size.height}}, night);
            for (float y = 0; y <= canvas.size.height; y += zoom)
                KXDrawRectFill({{canvas.origin.x, canvas.origin.y + y}, {canvas.size.width, 1}}, night);
            drawMeadow(*flower);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
