// The same widgets in the themes that come with the library, and in one of pictures, beside each other; in a
// scroll panel, which has more rows than room.
#include "example.h"

#include <vector>

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Themes", {480, 270}, -1);
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXTexture frame(example.file("panel.png"));
        KXUITheme themes[4] = {KXUILightTheme(), KXUIDarkTheme(), KXUIHighContrastTheme(), KXUIDarkTheme()};
        for (const KXUIPart part : {KXUIPartPanel, KXUIPartButton}) {
            themes[3].skins[part].normal.texture = &frame;
            themes[3].skins[part].normal.corner = 8;
        }
        themes[3].palette.text = gold;

        struct Sheet {
            KXUIButton button, rows[6];
            KXUICheckBox box;
            KXUIRadioGroup group;
            KXUISlider slider;
            KXUIProgressBar bar;
            KXUILayout column{KXUIColumn}, list{KXUIColumn};
            KXUIScrollPanel scroll;
            KXUIPanel panel;
        } sheets[4];
        for (Sheet& sheet : sheets) {
            sheet.button.setText("A button");
            sheet.box.setText("A check box");
            sheet.box.setChecked(-1);
            sheet.group.add("One");
            sheet.group.add("Another");
            sheet.group.setSelectedIndex(0);
            sheet.bar.setProgress(0.6f);
            sheet.bar.setSize({90, 14});
            sheet.slider.setSize({90, 16});
            sheet.scroll.setSize({90, 76});
            for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{
                     &sheet.button, &sheet.box, &sheet.group, &sheet.slider, &sheet.bar, &sheet.scroll}) {
                sheet.column.add(*each);
                sheet.panel.add(*each);
            }
            for (KXUIButton& row : sheet.rows) {
                row.setText("A row");
                sheet.list.add(row);
                sheet.scroll.add(row);
            }
            sheet.scroll.setLayout(&sheet.list);
            sheet.column.setPadding(10);
            sheet.column.setGap(6);
            sheet.panel.setLayout(&sheet.column);
            sheet.panel.setHasBackground(-1);
        }
        sheets[1].panel.focus(sheets[1].button);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                for (Sheet& sheet : sheets)
                    sheet.panel.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int i = 0; i < 4; ++i) {
                KXUISetTheme(themes[i]); // a game has one
                sheets[i].panel.setRect({8 + 118.0f * i, 8}, {110, 254});
                sheets[i].panel.draw();
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
