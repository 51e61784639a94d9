// Animated sprites: owl.spr holds the animations and boxes, owl.png beside it the pictures. The build makes
// owl.spr out of owl.json with kxsprite.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    std::srand(4); // the owls blink at random, but the same way every time
    {
        KXWindow window("Sprites", {400, 250});
        KXSprite flying; // owls fly from left to right
        flying.load(example.file("owl.spr"));
        flying.setScale(3);
        flying.setAnimation("fly");
        KXPoint at = {-20, 40};
        std::unique_ptr<KXSprite> sitting[5];
        for (int i = 0; i < 5; ++i) {
            sitting[i].reset(flying.clone()); // the same animations, playing on its own
            sitting[i]->setScale(i == 2 ? 4 : 3);
            sitting[i]->setAnimation("sit");
            sitting[i]->randomizeCurrentFrame();
        }
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                flying.poll(); // counts one step of the duration of the frame on show
                for (const auto& owl : sitting)
                    owl->poll();
                at.x = at.x > 400 ? -48 : at.x + 2;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 40; ++i)
                KXDrawRectFill(
                    {{static_cast<float>(i * 137 % 400), static_cast<float>(i * 61 % 150)}, {1, 1}}, paper);
            KXDrawCircleFill({204, 66}, 50, 64, gold);
            KXDrawRectFill({{0, 196}, {400, 8}}, rose); // the branch, with leaves
            KXDrawRectFill({{0, 200}, {400, 6}}, dusk);
            for (int i = 0; i < 10; ++i) {
                const float x = 12 + 42.0f * i;
                KXDrawTriangleFill({x, 202}, {x - 5, 216}, {x + 9, 214 + 6.0f * (i % 3)},
                                   i % 2 ? leaf : teal);
            }
            flying.draw(at);
            for (int i = 0; i < 5; ++i)
                sitting[i]->draw({26 + 74.0f * i, i == 2 ? 136.0f : 151.0f});

            // A box of the sprite is in pixels of a frame, for the game to test who meets whom.
            const KXRect body = flying.boundingBoxNamed("body");
            KXDrawRect({{at.x + 3 * body.origin.x, at.y + 3 * body.origin.y},
                        {3 * body.size.width, 3 * body.size.height}},
                       withAlpha(leaf, 0.7f));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
