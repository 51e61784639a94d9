#include "UITest.h"

#include "core/dispatch/EventDispatch.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"
#include "input/StepInput.h"

#include <map>
#include <sstream>
#include <vector>

UITest::UITest() {
    window = std::make_unique<KXWindow>("UI", KXSize{320, 200});
    window->setRenderContext();
    hands = KXTestUser(window->id());
    fill({0.2f, 0.3f, 0.4f, 1});
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, KXZeroPoint);
    moveMouse(-1, -1);
}

UITest::~UITest() {
    for (const KXMouseButton button : {KXMouseLeft, KXMouseMiddle, KXMouseRight})
        release(button);
    _KXUnsetMouseWheel();
    _KXInitKeys();
    _KXForgetInput();
}

void UITest::step(unsigned count) {
    _KXUnsetMouseWheel();
    _KXBeginInputStep(); // it stays under way while the test polls
    _KXDispatchEvents();
    steps.advance(count);
    _KXStep().step += count - 1;
}

// The parts of a text, without blanks before them.
static std::vector<std::string> split(std::string text, const std::string& separator) {
    std::vector<std::string> parts;
    for (text += separator; !text.empty();) {
        const std::size_t start = text.find_first_not_of(' '), end = text.find(separator);
        parts.push_back(start < end ? text.substr(start, end - start) : "");
        text.erase(0, end + separator.size());
    }
    return parts;
}

static std::string trimmed(std::string text) { return text.erase(text.find_last_not_of(' ') + 1); }

static KXKeyNumber key(const std::string& name) {
    const int number = KXKeyFromName(name.c_str());
    EXPECT_NE(number, KXKeyNone) << name;
    return static_cast<KXKeyNumber>(number);
}

int UITest::act(const std::string& acts) {
    int told = 0;
    for (const std::string& each : split(acts, ","))
        told |= doAct(each);
    return told;
}

void UITest::expectEach(const std::string& transcript) {
    for (const std::string& line : split(transcript, ";")) {
        const std::vector<std::string> sides = split(line, "->");
        ASSERT_EQ(sides.size(), 2u) << line;
        const std::string told = act(sides[0].substr(0, sides[0].size() - 1)) ? "told " : "";
        EXPECT_EQ(trimmed(told + state()), trimmed(sides[1])) << line;
    }
}

int UITest::doAct(const std::string& act) {
    const std::size_t blank = act.find(' ');
    const std::string verb = act.substr(0, blank), rest = blank == act.npos ? "" : act.substr(blank + 1);
    if (verb == "click" || (verb == "press" && !rest.empty())) {
        const int told = doAct((verb == "click" ? "press " : "at ") + rest);
        return told | doAct(verb == "click" ? "release" : "press");
    }
    if (verb == "wait")
        return step(static_cast<unsigned>(std::stoi(rest))), 0;
    if (verb == "poll")
        return pollSteps(std::stoi(rest));
    const std::map<std::string, std::function<void()>> verbs = {
        {"at", [&] { moveMouse(static_cast<int>(place(rest).x), static_cast<int>(place(rest).y)); }},
        {"press", [&] { press(); }},
        {"release", [&] { release(); }},
        {"wheel", [&] { wheel(std::stof(rest)); }},
        {"type", [&] { type(rest.c_str()); }},
        {"compose", [&] { compose(rest.c_str()); }},
        {"hold", [&] { keyDown(key(rest)); }},
        {"let", [&] { keyUp(key(rest)); }}};
    const auto does = verbs.find(verb);
    if (does == verbs.end())
        return tap(act);
    does->second();
    return poll();
}

int UITest::tap(const std::string& keys) {
    const std::vector<std::string> names = split(keys, "+");
    for (const std::string& name : names)
        keyDown(key(name));
    const int told = poll();
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        keyUp(key(*name));
    return told | poll();
}

int UITest::pollSteps(int count) {
    int told = 0;
    for (; count > 0; --count, step())
        told |= poll();
    return told;
}

KXPoint UITest::place(const std::string& name) const {
    KXPoint point = {NAN, NAN};
    std::istringstream(name) >> point.x >> point.y;
    EXPECT_EQ(point.y, point.y) << name;
    return point;
}
