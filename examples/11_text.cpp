// Text: two fonts, colours within a line, what a text measures, and any language the font knows.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Text", {400, 250});
        KXFont large(example.font(), KXAliasModeTexture); // fast; KXAliasModePolygon draws outlines
        large.setSize(40);
        KXFont small(example.font(), KXAliasModeTexture);
        small.setSize(14);
        const char* story = "One letter after another, as if somebody typed.";
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);

            // A colour is red, green, blue and opacity between {C and }; {EC} ends it.
            const char* title = "{C1,0.85,0.54,1}Tw{EC}{C0.91,0.41,0.47,1}il{EC}{C0.49,0.79,0.5,1}ig{EC}"
                                "{C0.29,0.6,0.65,1}ht{EC}";
            const float width = large.stringBounds(title).width; // colours do not count
            large.print({(400 - width) / 2, 18}, paper, "%s", title);

            small.print({30, 88}, paper,
                        "Health {C0.91,0.41,0.47,1}%d{EC}, score {C1,0.85,0.54,1}%05d{EC}, %s", 72, 480,
                        "level one"); // as printf

            small.print({30, 114}, paper, "Grüße, Καλημέρα, Привет, żółw"); // UTF-8
            small.print({30, 140}, paper, "%.*s", step / 3, story);

            // A text measured: a rectangle as wide as the pen moves, and the line that the letters stand on.
            small.setSize(30);
            const char* word = "Glyph";
            const KXPoint at = {30, 188};
            const float advance = small.advance(word), ascender = small.ascender();
            const float baseline = at.y + ascender + small.descender();
            KXDrawRectFill({{at.x, baseline - ascender}, {advance, small.fullHeight()}}, dusk);
            KXDrawLine({at.x - 8, baseline}, {at.x + advance + 8, baseline}, rose);
            small.print(at, gold, "%s", word);
            small.setSize(14);
            small.print({156, 186}, rose, "the baseline");
            small.print({156, 208}, paper, "advance %.0f, ascender %.0f", advance, ascender);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
