// A game pad: its sticks, triggers, buttons and hat. Plug one in at any time.
#include "example.h"

static void drawStick(KXPoint centre, int xAxis, int yAxis) {
    KXDrawCircleFill(centre, 26, 48, night);
    const float x = KXGamePadAxis(xAxis) / 32768.0f, y = KXGamePadAxis(yAxis) / 32768.0f; // -1 to 1
    KXDrawCircleFill({centre.x + 12 * x, centre.y + 12 * y}, 17, 48, x || y ? gold : teal);
}

static void drawTrigger(KXPoint at, int axis, int pressed) {
    KXDrawRectFill({at, {60, 16}}, dusk);
    const float way = KXMaxf(0, KXGamePadAxis(axis) / 32767.0f);
    KXDrawRectFill({at, {60 * way, 16}}, pressed ? gold : teal); // pressed: half of the way or more
}

static void drawPad() {
    KXDrawCircleFill({112, 140}, 62, 64, dusk);
    KXDrawCircleFill({288, 140}, 62, 64, dusk);
    KXDrawRectFill({{112, 78}, {176, 90}}, dusk);
    drawStick({150, 150}, KXGamePadLeftStickX, KXGamePadLeftStickY);
    drawStick({250, 150}, KXGamePadRightStickX, KXGamePadRightStickY);
    drawTrigger({82, 44}, KXGamePadLeftTriggerAxis, KXGamePadLeftTrigger(0));
    drawTrigger({258, 44}, KXGamePadRightTriggerAxis, KXGamePadRightTrigger(0));
    const KXColor colors[] = {leaf, rose, teal, gold};
    const KXPoint places[] = {{300, 138}, {322, 116}, {278, 116}, {300, 94}};
    for (int i = 0; i < 4; ++i) {
        const bool held = KXGamePadButton(KXGamePadButton1 + i);
        KXDrawCircleFill(places[i], 12, 32, held ? colors[i] : withAlpha(colors[i], 0.35f));
        if (held)
            KXDrawCircle(places[i], 15, 32, paper);
    }
    KXDrawRectFill({{76, 108}, {48, 16}}, night); // the hat
    KXDrawRectFill({{92, 92}, {16, 48}}, night);
    const struct {
        KXHatDirection direction;
        KXPoint at;
    } arms[] = {
        {KXHatUp, {92, 92}}, {KXHatDown, {92, 124}}, {KXHatLeft, {76, 108}}, {KXHatRight, {108, 108}}};
    for (const auto& arm : arms)
        if (KXGamePadHat(arm.direction))
            KXDrawRectFill({arm.at, {16, 16}}, gold);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A game pad", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        int plugged = KXInitGamePad(); // opens the first one there is
        KXTimer lookAgain(120);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                if (!plugged && lookAgain.tick())
                    plugged = KXInitGamePad();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            drawPad();
            const int button = KXGamePadPressedButton(); // the lowest one, -1 for none
            KXUIGlobalFontPrint({20, 218}, paper,
                                !plugged     ? "No game pad is plugged in."
                                : button < 0 ? "Press something."
                                             : KXGamePadButtonToString(button));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
