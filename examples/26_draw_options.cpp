// Drawing by names: what is not named stays as it is. Sprites and their boxes are turned and mirrored alike.
#include "example.h"

#include <cmath>

static void drawOutline(const KXPlacedBox& box, KXColor color) {
    for (int i = 0; i < 4; ++i)
        KXDrawLine(box.corners[i], box.corners[(i + 1) % 4], color);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Drawing by names", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture fish(example.file("fish.png")); // 22 by 16 pixels
        KXSprite owl;
        owl.load(example.file("owl.spr"));
        owl.setAnimation("fly");
        KXSprite second(owl); // a copy of everything, boxes and all
        second.poll();
        const KXColor tints[] = {gold, teal, rose, leaf, paper};
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                owl.poll();
                second.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 20; ++i) { // a shoal, each fish held by its middle
                KXDrawOptions options;
                options.rotation = i * 18 + step * 0.3f;
                const float angle = options.rotation * 3.14159f / 180;
                options.position = {110 + 82 * std::sin(angle), 116 - 82 * std::cos(angle)};
                options.origin = {11, 8};
                options.tint = tints[i % 5];
                options.scale = {1.2f + 0.4f * std::sin(3 * angle), 1.2f};
                fish.draw(options);
            }
            fish.draw({.flip = KXFlipLeftRight, .position = {78, 92}, .scale = {3, 3}});
            // The eye of the fish, stretched, and half there.
            fish.draw({.position = {84, 164},
                       .tint = withAlpha(paper, 0.5f),
                       .source = {{12, 3}, {10, 9}},
                       .size = {52, 10}});

            const float swing = 24 * std::sin(step * 0.05f);
            const KXDrawOptions right = {
                .position = {290, 62}, .origin = {12, 4}, .rotation = swing, .scale = {4.5f, 4.5f}};
            const KXDrawOptions left = {.flip = KXFlipLeftRight,
                                        .position = {290, 162},
                                        .origin = {12, 4},
                                        .rotation = -swing,
                                        .scale = {3, 4.5f},
                                        .tint = {1, 0.75f, 0.8f, 1}};
            owl.draw(right);
            second.draw(left);
            // Where the box of the owl is, turned with it, and the upright rectangle around that.
            for (const KXPlacedBox& body : {owl.placedBox("body", right), second.placedBox("body", left)}) {
                drawOutline(body, leaf);
                KXDrawRect(body.bounds, withAlpha(paper, 0.4f));
            }
            KXUIGlobalFontPrint({12, 228}, paper,
                                "Position, origin, rotation, scale, flip, tint, source, size");
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
