// A list, and a line to type into: Return adds what was typed, a second click or Return takes a row off the
// list.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A list and a text entry", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, dusk, teal, teal, gold, paper);

        KXUITextEntry entry;
        entry.setRect({24, 48}, {180, 24});
        entry.setPlaceholder("What else?");
        entry.setMaximumLength(30);
        entry.focus(); // it has the keyboard from the start
        KXUIButton add;
        add.setText("Add");
        add.setRect({226, 48}, {38, -1});
        KXUIListBox list;
        list.setRect({24, 84}, {240, 135});
        list.setTrackColor(dusk);
        list.setKnobColor(gold);
        for (const char* thing : {"Rope, twenty metres", "A {C1,0.85,0.54,1}lantern{EC}", "Matches",
                                  "Two blankets", "Bread and cheese", "The old map", "A whistle", "Chalk"})
            list.add(thing);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                entry.poll();
                const bool clicked = add.clicked(KXMouseLeft); // widgets are asked in every step
                if ((clicked || entry.entered()) && entry.length()) {
                    const int row = list.add(entry.text());
                    list.setSelectedIndex(row); // scrolls there, too
                    entry.setText("");
                }
                list.poll();
                if (list.activatedIndex() >= 0)
                    list.remove(list.activatedIndex());
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXUIGlobalFontPrint({24, 16}, gold, 16, "To take along");
            entry.draw();
            add.draw();
            list.draw();
            KXDrawRectFill({{284, 48}, {92, 171}}, dusk);
            KXUIGlobalFontPrint({298, 60}, gold, 30, KXTempString("%d", list.count()));
            KXUIGlobalFontPrint({298, 98}, paper, "things");
            if (list.selectedIndex() >= 0) {
                KXUIGlobalFontPrint({298, 150}, paper, "selected:");
                KXUIGlobalFontPrint({298, 170}, gold, KXTempString("row %d", list.selectedIndex() + 1));
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
