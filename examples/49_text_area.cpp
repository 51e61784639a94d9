// A small editor: lines with their numbers to the left, wrapped notes to the right, and below where the
// cursor is. Tab is for the text on the left, so Control and Tab go from one to the other.
#include "example.h"

static const char* const script = "owl meets fox\n"
                                  "\tsay \"Good evening.\"\n"
                                  "\twait 2\n"
                                  "\n"
                                  "fox answers\n"
                                  "\tsay \"It was, until you came.\"\n"
                                  "\tif the moon is full\n"
                                  "\t\thowl\n"
                                  "\tend\n";

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Text area", {540, 220});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, dusk, night, teal, gold, paper);

        KXUITextArea scene;
        scene.setRect({16, 16}, {300, 150});
        scene.setShowsLineNumbers(-1);
        scene.setTakesTabs(-1);
        scene.setText(script);
        scene.select(scene.length(), 0);

        KXUITextArea notes;
        notes.setRect({332, 16}, {192, 150});
        notes.setWraps(-1);
        notes.setPlaceholder("What is this scene about? As many lines as you like.");

        KXUILabel where;
        where.setOrigin({16, 182});
        where.setTextColor(gold);

        scene.focus();
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                scene.poll();
                notes.poll();
                const KXTextPosition at = scene.positionOf(scene.cursor());
                where.setText(KXTempString("Line %d of %d, column %d; %d characters of notes", at.line + 1,
                                           scene.lineCount(), at.column + 1, notes.length()));
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            scene.draw();
            notes.draw();
            where.draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
