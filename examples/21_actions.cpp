// Actions: what the game calls "left" and "jump" is done with keys, buttons and sticks that the player
// chooses: click on one and press what you like. They are kept in actions.txt, which people can read and
// change.
#include "example.h"

#include <string>

static KXActions defaults() {
    KXActions actions;
    actions.bind("left", KXInputOfPosition(KXPositionA)); // where the hand lies, on every layout
    actions.bind("left", KXInputOfPad(KXPadLeftStickLeft, KXAnyPad));
    actions.bind("right", KXInputOfPosition(KXPositionD));
    actions.bind("right", KXInputOfPad(KXPadLeftStickRight, KXAnyPad));
    actions.bind("jump", KXInputOfKey(KXKeySpace));
    actions.bind("jump", KXInputOfPad(KXPadA, KXAnyPad));
    actions.bind("jump", KXInputOfMouse(KXMouseRight));
    return actions;
}

static KXRect rowOf(int index) { return {{120, 16 + 38.0f * index}, {264, 30}}; }

static void drawRow(const KXActions& actions, int index, bool asked) {
    const char* name = actions.action(index);
    const KXRect row = rowOf(index);
    KXDrawRectFill(row, asked ? gold : dusk);
    KXDrawRectFill({row.origin, {row.size.width * actions.value(name), 30}}, teal); // how far it is pushed
    std::string text;
    for (const KXInput& input : actions.inputs(name))
        text += (text.empty() ? "" : ", ") + std::string(KXInputName(input));
    KXUIGlobalFontPrint({row.origin.x - 104, row.origin.y + 8}, paper, name);
    KXUIGlobalFontPrint({row.origin.x + 8, row.origin.y + 8}, asked ? night : paper,
                        asked ? "press something" : text.c_str());
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]) || !KXInitPads())
        return example.failed();
    {
        KXWindow window("Actions", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        KXTexture fish(example.file("fish.png"));
        KXActions actions = defaults();
        actions.load("actions.txt"); // what the player has chosen, if anything
        const char* asked = nullptr; // the action that is given another input
        float x = 100, height = 0, speed = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                KXInput pressed;
                if (asked && KXNextPress(&pressed)) {
                    actions.unbind(asked);
                    actions.bind(asked, pressed);
                    actions.save("actions.txt");
                    asked = nullptr;
                } else if (KXMouseWentDown(KXMouseLeft)) {
                    asked = actions.action((KXMouseY - 16) / 38); // null for a bad index
                }
                x += 3 * (actions.value("right") - actions.value("left"));
                if (actions.wentDown("jump") && height == 0)
                    speed = 5;
                height = KXMaxf(0, height + speed);
                speed = height > 0 ? speed - 0.2f : 0;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXDrawRectFill({{0, 226}, {400, 24}}, teal);
            for (int i = 0; i < actions.count(); ++i)
                drawRow(actions, i, actions.action(i) == asked);
            fish.draw(static_cast<int>(x), static_cast<int>(196 - height), 1.0f, 3.0f, 0, 0, -1);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
