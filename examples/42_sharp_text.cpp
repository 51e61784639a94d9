// Sharp text: this window shows each unit of its logical size as two pixels or more. On the left letters are
// enlarged like pictures, on the right they are made in the pixels that they are seen in.
#include "example.h"

/// The sign of an inn in the world that a camera shows.
static void drawSign(const KXTextLayout& name) {
    KXDrawRoundedRect({{-42, -15}, {84, 30}}, 6, KXShapePaint(teal));
    name.draw({-42, -13}, gold);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Sharp text", {400, 250});
        KXLogicalSize logical;
        logical.size = {200, 125};
        window.setLogicalSize(logical);
        KXFont font(example.font(), KXAliasModeTexture);
        font.setSize(9);
        KXTextOptions box, sign;
        box.width = 90;
        const KXTextLayout story(
            font, "Letters keep their places; only their edges {C1,0.85,0.54,1}change.{EC}", box);
        sign.width = 84;
        sign.align = KXTextAlignCentre;
        sign.outline = 0.75f;
        sign.outlineColor = night;
        const KXTextLayout name(font, "The Owl &\nLighthouse Inn", sign);
        KXCamera camera;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (const int sharp : {0, -1}) {
                const float left = sharp ? 100 : 0;
                window.setSharpText(sharp); // a game does this once
                font.print({left + 5, 4}, paper, sharp ? "setSharpText" : "as it is");
                story.draw({left + 5, 18}, paper);
                camera.area = {{left, 62}, {100, 63}};
                camera.zoom = 1.15f;
                camera.rotation = -6;
                camera.sharpText = sharp;
                KXPushCamera(camera);
                drawSign(name);
                KXPopCamera();
            }
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
