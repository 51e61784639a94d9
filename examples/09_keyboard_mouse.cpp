// The keyboard and the mouse: the arrows move the fish, the left button paints, the wheel makes the brush
// larger or smaller, Space wipes everything off.
#include "example.h"

#include <vector>

// Key numbers; KXKeyboard.h lists them all.
const int keyUp = 99, keyRight = 100, keyLeft = 101, keyDown = 102, keySpace = 133;

static void drawKey(KXRect rect, int key) {
    const bool held = KXKey(key);
    KXDrawRectFill(rect, held ? gold : dusk);
    KXDrawRect(rect, held ? paper : teal);
    const char* name = KXKeyToString(key);
    const int left = static_cast<int>(rect.size.width - KXUIGlobalFontStringBounds(name).width) / 2;
    KXUIGlobalFontPrint({rect.origin.x + left, rect.origin.y + 6}, held ? night : paper, name);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Keyboard and mouse", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture fish(example.file("fish.png"));
        KXPoint at = {40, 110}, lastMouse = KXMousePoint;
        int flips = 0, brush = 6;
        struct Dot {
            KXPoint at;
            int radius;
        };
        std::vector<Dot> paint;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) { // reads what the user did since the last step
                at.x += KXKey(keyRight) ? 2 : KXKey(keyLeft) ? -2 : 0;
                at.y += KXKey(keyDown) ? 2 : KXKey(keyUp) ? -2 : 0;
                flips = KXKey(keyRight) ? 0 : KXKey(keyLeft) ? 2 : flips; // 2 mirrors it
                if (KXKey(keySpace, 1))                                   // once for each press
                    paint.clear();
                brush += KXMouse(4) ? 1 : KXMouse(3) ? -1 : 0; // a notch of the wheel: up, down
                KXClampi(&brush, 2, 20);
                if (KXMouse(0)) // the left button is down
                    for (float t = 0.25f; t <= 1; t += 0.25f)
                        paint.push_back({KXParametricLine(t, lastMouse, KXMousePoint), brush});
                lastMouse = KXMousePoint;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXDrawRectFill({{0, 0}, window.size()}, night);
            for (const Dot& dot : paint)
                KXDrawCircleFill(dot.at, dot.radius, 24, teal);
            fish.draw(static_cast<int>(at.x), static_cast<int>(at.y), 1.0f, 3.0f, 0, flips, -1);
            KXDrawCircle(KXMousePoint, brush, 24, gold);
            KXDrawRectFill({{0, 184}, {400, 66}}, KXMakeColori(20, 20, 44, 255));
            drawKey({{72, 190}, {52, 25}}, keyUp);
            drawKey({{14, 220}, {52, 25}}, keyLeft);
            drawKey({{72, 220}, {52, 25}}, keyDown);
            drawKey({{130, 220}, {52, 25}}, keyRight);
            drawKey({{210, 220}, {90, 25}}, keySpace);
            KXUIGlobalFontPrint({210, 194}, paper, KXTempString("mouse %s", KXPointToStringi(KXMousePoint)));
            KXDrawRectFill({{320, 194}, {50, 50}}, dusk); // the mouse and its left button
            KXDrawRectFill({{322, 196}, {22, 20}}, KXMouse(0) ? gold : teal);
            KXDrawRectFill({{346, 196}, {22, 20}}, KXMouse(1) ? gold : teal);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
