// Scripts of the world: letters that join, marks on letters, from the left and from the right, several in one
// line.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Scripts of the world", {400, 250});
        KXFont font(example.font(), KXAliasModeTexture);
        font.setSize(15);
        // What this font lacks comes from these; only their files count.
        font.addFallback(KXFont(example.font("Lohit Devanagari", "fonts-lohit-deva"), KXAliasModeTexture));
        font.addFallback(
            KXFont(example.font("Droid Sans Fallback", "fonts-droid-fallback"), KXAliasModeTexture));
        font.addFallback(KXFont(example.font("Symbola", "fonts-symbola"), KXAliasModeTexture));

        KXTextOptions half;
        half.width = 180;
        const char* const greetings[] = {
            "The owl waves: e\u0301tude, Z\u030Curich, office",
            "Сова летит над морем и горами",
            "Η κουκουβάγια πετά πάνω από τη θάλασσα",
            "उल्लू समुद्र और पहाड़ों के ऊपर उड़ता है",
            "البومة تطير فوق البحر والجبال",
            "הינשוף עף מעל הים (וההרים)",
            "猫头鹰飞过大海,飞过群山。",
            "Signs: ♜ ☂ ♫ \U0001F600 \U0001F989 \U0001F30A",
        };
        KXTextLayout texts[8];
        for (int i = 0; i < 8; ++i)
            texts[i].layOut(font, greetings[i], half);

        KXTextOptions whole; // one paragraph, several scripts; the number stays a number
        whole.width = 376;
        whole.align = KXTextAlignCentre;
        const KXTextLayout mixed(
            font, "She said {C1,0.85,0.54,1}שלום 123 עולם{EC} and {C0.49,0.79,0.5,1}مرحبا{EC}, then नमस्ते.",
            whole);
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
            for (int i = 0; i < 8; ++i) {
                const KXPoint at = {12 + 196.0f * (i % 2), 8 + 50.0f * (i / 2)};
                KXDrawRectFill({{at.x - 4, at.y}, {188, 46}}, dusk);
                texts[i].draw(at, paper);
            }
            mixed.draw({12, 216}, paper);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
