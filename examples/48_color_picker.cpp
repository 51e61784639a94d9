// A lamp's colour, chosen by eye or typed, and a message that offers to take the last change back.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A colour picker", {400, 250});
        KXUISetTheme(KXUILightTheme());
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);

        KXColor lamp = gold;
        KXUIColorPicker picker;
        picker.setShowsOpacity(-1);
        picker.setColor(lamp);
        picker.setRect({16, 16}, {180, 200});
        KXUIButton take;
        take.setText("Take it");
        take.setOrigin({16, 222});
        KXUIToastOptions undo;
        undo.action = "Undo";
        KXUIToast toast;
        toast.setRect({200, 0}, {200, 250}); // messages lie at its bottom

        KXUIPanel panel;
        for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&picker, &take, &toast})
            panel.add(*each);
        panel.setDefaultButton(&take);
        KXColor before = lamp;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                panel.poll();
                if (take.activated()) {
                    before = lamp;
                    lamp = picker.color();
                    picker.setColor(lamp); // which is the old one from now on
                    toast.show("The lamp is changed.", undo);
                }
                if (toast.chosen() != -1) {
                    lamp = before;
                    picker.setColor(lamp);
                }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            const KXColor seen = take.activated() ? lamp : picker.color();
            for (const KXColor& light : {withAlpha(seen, seen.a * 0.3f), seen}) {
                const float radius = light.a < seen.a ? 64 : 32;
                KXDrawEllipse({300, 100}, {radius, radius}, KXShapePaint(light));
            }
            panel.draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
