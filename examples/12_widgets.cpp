// Buttons, a toggle and sliders. The game polls each of them in a logic step and draws it in a frame; there
// is no other machinery.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Buttons, toggle, sliders", {400, 250});
        // Font and colours first: widgets take them over when they are made.
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, dusk, teal, teal, gold,
                     paper); // border, background, pressed, selection, focus, text

        KXUIButton next;
        next.setText("Another colour");
        next.setOrigin({24, 30}); // as large as its caption
        KXUIToggleButton filled;
        filled.setText("Filled");
        filled.setOrigin({24, 66});
        filled.setState(KXUIToggleButtonStateOn);
        KXUISlider corners, radius;
        corners.setSize({140, 20}); // the size first: setOrigin() lays the slider out
        corners.setOrigin({24, 138});
        corners.setValueRange(0, 9); // it begins at 0: 3 is added below
        corners.setValue(3);
        radius.setSize({140, 20});
        radius.setOrigin({24, 202});
        radius.setValueRange(0, 90);
        radius.setValue(70);
        corners.setKnobFillColor(gold);
        radius.setKnobFillColor(gold);

        const KXColor colors[] = {gold, rose, leaf, teal};
        int color = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                if (next.clicked(KXMouseLeft)) // the left button
                    color = (color + 1) % 4;
                filled.clicked(KXMouseLeft); // turns itself on and off
                corners.poll();
                radius.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXDrawRectFill({{188, 20}, {192, 210}}, dusk);
            const int n = corners.value() + 3, size = radius.value();
            if (filled.state() == KXUIToggleButtonStateOn)
                KXDrawCircleFill({284, 125}, size, n, colors[color]);
            KXDrawCircle({284, 125}, size + 4, n, colors[color]);
            next.draw();
            filled.draw();
            KXUIGlobalFontPrint({24, 114}, paper, KXTempString("%d corners", n));
            corners.draw();
            KXUIGlobalFontPrint({24, 178}, paper, KXTempString("Radius %d", size));
            radius.draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
