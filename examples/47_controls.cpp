// The corner of an editor: tabs at the top, a divider that is dragged, and at its left what a layer is set
// by, with a drop-down, spin boxes and sliders. A panel polls and draws all of them.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Controls", {400, 250}, -1);
        KXUISetTheme(KXUIDarkTheme());
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXUITabBar levels;
        for (const char* level : {"Ember meadow", "Owl tower", "Lamp caves", "Harbour by night"})
            levels.add(level);
        levels.setClosable(-1);
        levels.setReorderable(-1);
        KXUIDropDown blend;
        for (const char* mode : {"Normal", "Multiplied", "Added", "Screened"})
            blend.add(mode);
        blend.setSelectedIndex(0);
        KXUISpinBoxOptions pixels;
        pixels.from = -4096, pixels.to = 4096, pixels.suffix = " px";
        KXUISpinBox x(pixels), y(pixels);
        x.setNumber(-24);
        KXUINumberSliderOptions shares, heights;
        shares.step = 0.01;
        heights.from = -50, heights.to = 50, heights.step = 1, heights.isVertical = -1;
        KXUINumberSlider opacity(shares), height(heights);
        opacity.setNumber(0.8);
        KXUISplitPanelOptions parts;
        parts.share = 0.45f, parts.leastFirst = 120;
        KXUISplitPanel split(parts);
        KXUILayout form(KXUIGrid, 2);
        form.setPadding(8);
        split.first().add(form);

        KXUIPanel panel; // in the order in which Tab goes
        panel.add(levels);
        panel.add(split);
        KXUILabel names[4]; // which the widgets are called by
        const char* const texts[] = {"Left", "Top", "Opacity", "Mixed"};
        _KXUIWidget* const widgets[] = {&x, &y, &opacity, &blend};
        for (int i = 0; i < 4; ++i) {
            names[i].setText(texts[i]);
            names[i].setWidget(widgets[i]);
            widgets[i]->setSize({-1, -1});
            panel.add(names[i]);
            panel.add(*widgets[i]);
            form.add(names[i]);
            form.add(*widgets[i], 1);
        }
        panel.add(height);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            const KXSize size = window.size();
            levels.setRect({0, 0}, {size.width, 24});
            split.setRect({0, 24}, {size.width, size.height - 24});
            height.setRect({size.width - 28, 32}, {20, size.height - 40});
            while (KXLogicLoop()) {
                panel.poll();
                if (levels.closedIndex() != -1)
                    levels.remove(levels.closedIndex());
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            const KXRect room = split.secondRect();
            const KXPoint moon = {room.origin.x + room.size.width / 2 + float(x.number()),
                                  room.origin.y + room.size.height / 2 + float(y.number() - height.number())};
            KXDrawEllipse(moon, {40, 28}, KXShapePaint(withAlpha(gold, opacity.number())));
            panel.draw(); // with the list of the drop-down above all
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
