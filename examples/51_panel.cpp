// A form in a panel: one call polls it, one draws it, Tab goes through it, Return saves and Escape clears.
// Below it stands what a screen reader would say of the widget that has the keyboard.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A panel", {400, 250}, -1);
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXUITheme theme = KXUIDarkTheme();
        theme.padding = {7, 4};
        KXUISetTheme(theme);

        KXUILabel nameLabel, rankLabel;
        nameLabel.setText("Name");
        rankLabel.setText("Rank");
        KXUITextEntry name;
        name.setSize({150, 24});
        nameLabel.setWidget(&name); // Alt and N, and a click, go to the entry
        KXUIDropDown rank;
        for (const char* each : {"Cadet", "Keeper", "Warden"})
            rank.add(each);
        rank.setSelectedIndex(1);
        rank.setSize({-1, -1});
        rankLabel.setWidget(&rank);
        KXUICheckBox lantern;
        KXUIButton save, clear;
        lantern.setText("Carries a lantern");
        save.setText("Save");
        clear.setText("Clear");

        KXUILayout form(KXUIGrid, 2), buttons(KXUIRow), all(KXUIColumn);
        form.add(nameLabel);
        form.add(name, 1);
        form.add(rankLabel);
        form.add(rank);
        buttons.addSpace(0, 1);
        buttons.add(clear);
        buttons.add(save);
        all.setPadding(16);
        all.setGap(10);
        all.add(form);
        all.add(lantern);
        all.add(buttons);
        KXUIPanel panel;
        for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&nameLabel, &name, &rankLabel, &rank,
                                                                     &lantern, &clear, &save})
            panel.add(*each); // the order of Tab
        panel.setHasBackground(-1);
        panel.setLayout(&all);
        panel.setDefaultButton(&save);
        panel.setCancelButton(&clear);
        panel.setMnemonic(nameLabel, KXKeyN);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            panel.setRect({20, 20}, {window.size().width - 40, 160});
            while (KXLogicLoop()) {
                panel.poll();
                if (save.activated())
                    window.setTitle(KXTempString("%s, %s", name.text(), rank.text(rank.selectedIndex())));
                if (clear.activated())
                    name.setText("");
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            panel.draw();
            const KXUIDescription said = (panel.focused() ? panel.focused() : &panel)->description();
            KXUIGlobalFontPrint({24, 200}, gold,
                                KXTempString("%s %s: %s (%s)", said.role.c_str(), said.name.c_str(),
                                             said.value.c_str(), said.state.c_str()));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
