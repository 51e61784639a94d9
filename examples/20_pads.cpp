// Several game pads: each one that is plugged in has a ball, moved by its left stick. The right stick aims,
// A sends a wave and shakes the pad, the right trigger blows it up. Plug them in and out at any time.
#include "example.h"

const KXColor colors[KXMaximumPads] = {gold, rose, leaf, teal, paper, gold, rose, leaf};

struct Player {
    KXPoint at = {200, 90};
    float wave = 0; // 1 to 0, from A on
};

static void play(Player& player, int pad) {
    const KXPoint stick = KXPadStick(pad, KXPadLeftSide); // within its dead zone it is (0, 0)
    player.at.x += 3 * stick.x;
    player.at.y += 3 * stick.y;
    KXClampf(&player.at.x, 20, 380);
    KXClampf(&player.at.y, 20, 160);
    player.wave = KXMaxf(0, player.wave - 0.02f);
    if (KXPadWentDown(pad, KXPadA)) { // once for each press, also for the shortest
        player.wave = 1;
        KXRumblePad(pad, 0.2f, 0.6f, 150); // few pads can; it does not matter here
    }
}

static void draw(const Player& player, int pad) {
    const KXPoint aim = KXPadStick(pad, KXPadRightSide);
    KXDrawCircle(player.at, 12 + 40 * (1 - player.wave), 48, withAlpha(colors[pad], player.wave));
    KXDrawLine(player.at, {player.at.x + 45 * aim.x, player.at.y + 45 * aim.y}, colors[pad]);
    KXDrawCircleFill(player.at, 10 + 8 * KXPadAxis(pad, KXPadRightTriggerAxis), 48, colors[pad]);
}

// Four to a row: the pad's number and name, and what is held on it.
static void drawSlot(int pad) {
    const KXPoint at = {8.0f + 97 * (pad % 4), 182.0f + 34 * (pad / 4)};
    const char *name = KXPadConnected(pad) ? KXPadName(pad) : "free", *held = "";
    for (int button = KXPadA; button <= KXPadRightTrigger; ++button)
        held = KXPadHeld(pad, button) ? KXPadButtonName(button) : held;
    KXDrawRectFill({at, {93, 30}}, KXPadConnected(pad) ? colors[pad] : dusk);
    KXUIGlobalFontPrint({at.x + 6, at.y + 3}, night, KXTempString("%d  %s", pad, name));
    KXUIGlobalFontPrint({at.x + 6, at.y + 16}, night, held);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]) || !KXInitPads()) // from here on pads are taken as they come
        return example.failed();
    {
        KXWindow window("Game pads", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 9, KXZeroPoint);
        Player players[KXMaximumPads];
        KXSetLogicExact(-1);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                for (const KXInputEvent& event : KXInputEvents())
                    if (event.type == KXInputEventPadConnected)
                        players[event.pad] = Player();
                for (int pad = 0; pad < KXMaximumPads; ++pad)
                    play(players[pad], pad); // one that is not there is at rest
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (int pad = 0; pad < KXMaximumPads; ++pad) {
                drawSlot(pad);
                if (KXPadConnected(pad))
                    draw(players[pad], pad);
            }
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
