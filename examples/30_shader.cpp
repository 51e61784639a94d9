// Shaders: waves for one picture, and glow and scan lines for the whole window. S turns them off and on.
#include "example.h"

#include <cmath>

const char* waves = R"(
uniform float time;
void main() {
    vec2 place = kxPlace + vec2(0.04 * sin(18.0 * kxPlace.y + time), 0.0);
    gl_FragColor = texture2D(kxTexture, place) * kxColor;
})";

const char* screen = R"(
uniform float time;
void main() {
    vec4 color = texture2D(kxTexture, kxPlace);
    vec3 glow = vec3(0.0);
    for (int i = -4; i <= 4; ++i)
        for (int j = -4; j <= 4; ++j) // what is bright shines on what lies around it
            glow += max(texture2D(kxTexture, kxPlace + 2.0 * kxTexel * vec2(i, j)).rgb - 0.5, 0.0);
    float row = kxPlace.y / kxTexel.y;
    float line = 0.86 + 0.14 * cos(3.14159 * row); // every other row is darker
    float roll = 0.04 * sin(9.0 * kxPlace.y - time);
    vec2 side = kxPlace - 0.5;
    float edge = 1.0 - 0.9 * dot(side, side); // as are the corners
    gl_FragColor = vec4((color.rgb + 0.05 * glow) * line * (edge + roll), 1.0);
})";

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Shaders", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 14, KXZeroPoint);
        KXTexture fish(example.file("fish.png")), frame(400, 250); // the window's pixels
        KXShader swims(waves), shines(screen);
        if (!shines.isUsable())
            std::printf("%s\n", KXError()); // and goes on plainly
        bool on = true;
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                if (KXKeyWentDown(KXKeyS))
                    on = !on;
                KXLogicUpdate();
                example.stepDone();
            }
            frame.setRenderContext(); // the whole picture goes into a texture
            KXClear(night);
            KXDrawCircleFill({310, 70}, 30, 64, gold);
            KXDrawRectFill({{0, 160}, {400, 90}}, teal);
            swims.setFloat("time", step * 0.15f);
            for (int i = 0; i < 4; ++i)
                fish.draw({.position = {20 + 96.0f * i, 140 + 22.0f * (i % 2)},
                           .scale = {3, 3},
                           .tint = i % 2 ? KXColor{0.7f, 1, 0.8f, 1} : KXColor{1, 1, 1, 1},
                           .shader = &swims});
            KXUIGlobalFontPrint({24, 30}, paper, "Glow and scan lines");
            KXDrawRect({{16, 22}, {170, 32}}, rose);
            frame.unsetRenderContext();

            window.setRenderContext();
            shines.setFloat("time", step * 0.05f);
            frame.draw({.blend = KXBlendReplace, .shader = on ? &shines : nullptr});
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
