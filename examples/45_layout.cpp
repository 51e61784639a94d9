// A window whose widgets follow its size: a tool bar, a list at the side, a form below, and the rest for what
// is worked on. Resize the window.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A layout", {400, 250}, -1);
        KXUITheme theme;
        theme.captions = KXUICaptionsLaidOut;
        KXUISetTheme(theme);
        _KXUIWidget::KXUIWidgetInnerPadding = {8, 5};
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXSetUIColor(teal, dusk, teal, teal, gold, paper);

        const char* const tools[] = {"Brush", "Fill", "Erase", "Help"};
        KXUIButton buttons[4];
        for (int i = 0; i < 4; ++i)
            buttons[i].setText(tools[i]);
        KXUILabel heading, names[2];
        heading.setText("Layers, from the top down; drag to change their order");
        names[0].setText("Name");
        names[1].setText("Music");
        KXUIListBox layers;
        for (const char* layer : {"Lamps", "Owls", "Walls", "Ground"})
            layers.add(layer);
        KXUITextEntry entries[2];
        entries[0].setText("Ember meadow");
        entries[1].setText("night.ogg");

        KXUILayout toolBar(KXUIRow), side(KXUIColumn), form(KXUIGrid, 2), middle(KXUIRow), all(KXUIColumn);
        for (int i = 0; i < 3; ++i)
            toolBar.add(buttons[i]);
        toolBar.addSpace(0, 1); // pushes what follows to the right
        toolBar.add(buttons[3]);
        side.add(heading);
        side.add(layers, 1); // the height that is left
        for (int i = 0; i < 2; ++i) {
            entries[i].setSize({80, 22});
            form.add(names[i]);
            form.add(entries[i], 1); // its column gets the width that is left
        }
        _KXUIWidget canvas; // nothing but its place
        KXUILayoutItem narrow;
        narrow.width = 130; // so the heading has lines
        middle.add(side, narrow);
        middle.add(canvas, 1);
        all.setGap(8);
        all.setPadding(8);
        all.add(toolBar);
        all.add(middle, 1);
        all.add(form);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            all.setRect(KXZeroPoint, window.size()); // costs a look at each while nothing changes
            while (KXLogicLoop()) {
                for (KXUIButton& button : buttons)
                    button.clicked(KXMouseLeft);
                for (KXUITextEntry& entry : entries)
                    entry.poll();
                layers.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXDrawRectFill(canvas.rect(), leaf);
            for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{
                     &buttons[0], &buttons[1], &buttons[2], &buttons[3], &heading, &layers, &names[0],
                     &names[1], &entries[0], &entries[1]})
                each->draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
