// The corner of a tool, in three scripts: captions in the middle of their buttons, labels, a tooltip, and
// dialog boxes with lines. All of it follows one theme.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A tool's corner", {400, 250});
        KXUITheme theme; // font, theme and colours first: widgets take them over when they are made
        theme.captions = KXUICaptionsLaidOut;
        theme.tooltip.width = 150;
        KXUISetTheme(theme);
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, dusk, teal, teal, gold, paper);

        const char* const captions[] = {"Save", "حفظ", "Сохранить"};
        const char* const tips[] = {"Writes the level into its file.", "يكتب المرحلة في ملفها.",
                                    "Записывает уровень в файл. {C0.7,0,0,1}Больше ничего не меняется.{EC}"};
        KXUIButton saves[3];
        for (int i = 0; i < 3; ++i) {
            saves[i].setText(captions[i]);
            saves[i].setRect({16, 66 + 32.0f * i}, {150, 26}); // the caption stays in the middle
            saves[i].setTooltip(tips[i]);
        }
        saves[1].setEnabled(0);

        KXUITextEntry title;
        title.setRect({16, 36}, {150, -1});
        title.setText("Ember meadow");
        KXUILabel name, hint;
        name.setText("Title");
        name.setOrigin({16, 16});
        name.setWidget(&title); // a click on the label puts the cursor into the entry
        KXTextOptions cut;
        cut.maxLines = 1;
        hint.setOptions(cut);
        hint.setRect({16, 226}, {368, -1}); // as high as its line
        hint.setText(
            "{C0.49,0.79,0.5,1}Short{EC} titles fit on the map; long ones are cut there, as this hint is.");

        const char* const questions[] = {"The level is there already. Shall it be replaced?",
                                         "هذه المرحلة موجودة. هل تريد استبدالها؟"};
        const char* const answers[][2] = {{"Replace", "Cancel"}, {"استبدال", "إلغاء"}};
        KXUIDialogBox boxes[2];
        for (int i = 0; i < 2; ++i) {
            boxes[i].setPadding(12);
            boxes[i].setMessageWidth(160);
            boxes[i].setMessage(questions[i]);
            for (const char* answer : answers[i])
                boxes[i].addButton(answer);
            boxes[i].setOrigin({200, 16 + 114.0f * i}); // its buttons come along
        }
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                name.clicked(KXMouseLeft);
                title.poll();
                for (KXUIButton& save : saves)
                    save.clicked(KXMouseLeft);
                for (KXUIDialogBox& box : boxes)
                    box.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{
                     &name, &title, &hint, &saves[0], &saves[1], &saves[2], &boxes[0], &boxes[1]})
                each->draw();
            KXUIDrawTooltip(); // over everything
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
