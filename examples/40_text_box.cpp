// Text in boxes: wrapped, aligned, in columns, cut with an ellipsis, typed letter by letter, and selected.
#include "example.h"

static const char* const tale =
    "The owl had read {C1,0.85,0.54,1}every book in the old lighthouse{EC} twice, and those about the sea "
    "more.";

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Text in boxes", {400, 250});
        KXFont font(example.font(), KXAliasModeTexture), large(example.font(), KXAliasModeTexture);
        font.setSize(12);
        large.setSize(26);

        KXTextLayout columns[4]; // left, centred, right and justified
        KXTextOptions column;
        column.width = 84;
        for (int i = 0; i < 4; ++i) {
            column.align = KXTextAlign(KXTextAlignLeft + i);
            columns[i].layOut(font, tale, column);
        }
        KXTextOptions table, cut, button, title, box;
        table.tabWidth = 62;
        const KXTextLayout scores(font, "Owl\t1200\nTwig\t980\nFish\t15", table);
        cut.width = 120;
        cut.maxLines = 2;
        const KXTextLayout summary(font, tale, cut);
        button.width = 112;
        button.height = 30;
        button.align = KXTextAlignCentre;
        button.verticalAlign = KXTextMiddle;
        const KXTextLayout caption(font, "Read on", button);
        title.outline = 2.5f;
        title.outlineColor = dusk;
        title.shadow = {3, 4};
        title.shadowColor = {0, 0, 0, 0.6f};
        const KXTextLayout heading(large, "Chapter 7", title);
        box.width = 232;
        const KXTextLayout speech(font, "Who is there? Letters keep their places while they are typed.", box);
        int steps = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++steps;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 4; ++i) {
                KXDrawRectFill({{6 + 97.0f * i, 8}, {92, 132}}, dusk);
                columns[i].draw({10 + 97.0f * i, 10}, paper);
            }
            scores.draw({10, 150}, leaf);
            summary.draw({132, 150}, paper);
            KXDrawRoundedRect({{276, 152}, {112, 30}}, 8, KXShapePaint(teal));
            caption.draw({276, 152}, night);
            heading.draw({256, 202}, gold);

            const KXPoint at = {10, 208}; // a word is selected, or the letter under the mouse
            const KXTextHit hit = speech.hit(KXMousePoint - at);
            const int begin = hit.inside ? hit.character : 14, end = hit.inside ? begin + 1 : 21;
            KXRect rects[4];
            for (int i = speech.selection(begin, end, rects, 4); i-- > 0;)
                KXDrawRectFill({rects[i].origin + at, rects[i].size}, withAlpha(rose, 0.6f));
            speech.drawUpTo(at, paper, steps / 2);
            const KXRect caret = speech.caret(steps / 2);
            KXDrawRectFill({caret.origin + at, {2, caret.size.height}}, rose);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
