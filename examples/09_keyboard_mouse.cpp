// The keyboard and the mouse: the arrows move the fish, the left button paints, the wheel makes the brush
// larger or smaller, Space wipes everything off.
#include "example.h"

#include <vector>

static void drawKey(KXRect rect, int key) {
    const bool held = KXKeyHeld(key);
    KXDrawRectFill(rect, held ? gold : dusk);
    KXDrawRect(rect, held ? paper : teal);
    const char* name = KXKeyName(key);
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
        int flips = KXFlipNone;
        float brush = 6;
        struct Dot {
            KXPoint at;
            float radius;
        };
        std::vector<Dot> paint;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) { // reads what the user did since the last step
                const int right = KXKeyHeld(KXKeyRight), left = KXKeyHeld(KXKeyLeft);
                at.x += right ? 2 : left ? -2 : 0;
                at.y += KXKeyHeld(KXKeyDown) ? 2 : KXKeyHeld(KXKeyUp) ? -2 : 0;
                flips = right ? KXFlipNone : left ? KXFlipLeftRight : flips;
                if (KXKeyWentDown(KXKeySpace)) // in this step
                    paint.clear();
                brush += KXMouseWheel().y; // in notches; fine wheels turn by parts of one
                KXClampf(&brush, 2, 20);
                if (KXMouseHeld(KXMouseLeft))
                    for (float t = 0.25f; t <= 1; t += 0.25f)
                        paint.push_back({KXParametricLine(t, lastMouse, KXMousePoint), brush});
                lastMouse = KXMousePoint;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (const Dot& dot : paint)
                KXDrawCircleFill(dot.at, static_cast<int>(dot.radius), 24, teal);
            fish.draw(static_cast<int>(at.x), static_cast<int>(at.y), 1.0f, 3.0f, 0, flips, -1);
            KXDrawCircle(KXMousePoint, static_cast<int>(brush), 24, gold);
            KXDrawRectFill({{0, 184}, {400, 66}}, KXMakeColori(20, 20, 44, 255));
            drawKey({{72, 190}, {52, 25}}, KXKeyUp);
            drawKey({{14, 220}, {52, 25}}, KXKeyLeft);
            drawKey({{72, 220}, {52, 25}}, KXKeyDown);
            drawKey({{130, 220}, {52, 25}}, KXKeyRight);
            drawKey({{210, 220}, {90, 25}}, KXKeySpace);
            KXUIGlobalFontPrint({210, 194}, paper, KXTempString("mouse %s", KXPointToStringi(KXMousePoint)));
            KXDrawRectFill({{320, 194}, {50, 50}}, dusk); // the mouse and its left button
            KXDrawRectFill({{322, 196}, {22, 20}}, KXMouseHeld(KXMouseLeft) ? gold : teal);
            KXDrawRectFill({{346, 196}, {22, 20}}, KXMouseHeld(KXMouseRight) ? gold : teal);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
