// What goes down and up in each step, and what came first: press Space and the left button, and type.
#include "example.h"

#include <deque>
#include <string>

struct Step {
    int held, downs, ups;
};
Step lanes[2][60]; // what Space and the left button did in the last steps
std::deque<std::string> lines;
std::string typed;

static const char* describe(const KXInputEvent& event) {
    if (event.type == KXInputEventText)
        return KXTempString("text %s", event.text);
    const bool down = event.type == KXInputEventKeyDown || event.type == KXInputEventMouseDown;
    if (!down && event.type != KXInputEventKeyUp && event.type != KXInputEventMouseUp)
        return nullptr;
    return KXTempString("%s %s", event.key ? KXKeyName(event.key) : "left button", down ? "down" : "up");
}

static void step(int number) {
    const int key = KXKeySpace, button = KXMouseLeft, column = number % 60;
    lanes[0][column] = {KXKeyHeld(key), KXKeyWentDown(key), KXKeyWentUp(key)};
    lanes[1][column] = {KXMouseHeld(button), KXMouseWentDown(button), KXMouseWentUp(button)};
    for (const KXInputEvent& event : KXInputEvents()) {
        if (event.type == KXInputEventText)
            typed += event.text;
        else if (event.type == KXInputEventKeyDown && event.key == KXKeyBackspace && !typed.empty())
            typed.pop_back();
        if (const char* line = describe(event))
            lines.push_back(KXTempString("step %d: %s", number, line));
        if (lines.size() > 12)
            lines.pop_front();
    }
}

static void draw() {
    for (int i = 0; i < 2; ++i) {
        const int y = 32 + 44 * i;
        KXUIGlobalFontPrint({12, y - 8.0f}, paper, i ? "left button" : "Space");
        KXDrawRectFill({{86, y - 1.0f}, {300, 2}}, dusk);
        for (float x = 86; const Step& step : lanes[i]) { // above the line it went down, below it up
            KXDrawRectFill({{x, y - 4.0f}, {5, step.held ? 8.0f : 0}}, gold);
            KXDrawRectFill({{x, y - 6.0f - 5 * step.downs}, {4, 5.0f * step.downs}}, leaf);
            KXDrawRectFill({{x, y + 6.0f}, {4, 5.0f * step.ups}}, rose);
            x += 5;
        }
    }
    for (std::size_t i = 0; i < lines.size(); ++i)
        KXUIGlobalFontPrint({12 + 190.0f * (i / 6), 118 + 16.0f * (i % 6)}, teal, lines[i].c_str());
    KXUIGlobalFontPrint({12, 224}, gold, KXTempString("typed: %s", typed.c_str()));
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Edges and events", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 11, KXZeroPoint);
        int steps = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                step(++steps);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
