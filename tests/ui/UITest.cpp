#include "UITest.h"

#include "core/dispatch/EventDispatch.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"
#include "input/StepInput.h"

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

static std::pair<std::string, std::string> verbAndRest(const std::string& act) {
    const std::size_t blank = act.find(' ');
    return {act.substr(0, blank), blank == act.npos ? "" : act.substr(blank + 1)};
}

int UITest::doAct(const std::string& act) {
    const auto [verb, rest] = verbAndRest(act);
    const std::vector<std::string> together = split(act, " & ");
    if (together.size() > 1) {
        for (const std::string& each : together)
            doAtOnce(each);
        return step(), poll();
    }
    if (verb == "click" || (verb == "press" && !rest.empty())) {
        const int told = doAct((verb == "click" ? "press " : "at ") + rest);
        return told | doAct(verb == "click" ? "release" : "press");
    }
    if (verb == "wait")
        return step(static_cast<unsigned>(std::stoi(rest))), 0;
    if (verb == "poll")
        return pollSteps(std::stoi(rest));
    for (const char* atOnce : {"at", "press", "release", "wheel", "type", "compose", "hold", "let"})
        if (verb == atOnce)
            return doAtOnce(act), step(), poll();
    return tap(act);
}

void UITest::doAtOnce(const std::string& act) {
    const auto [verb, rest] = verbAndRest(act);
    if (verb == "click" || (verb == "press" && !rest.empty()))
        doAtOnce("at " + rest);
    if (verb == "at")
        hands.move({std::floor(place(rest).x), std::floor(place(rest).y)});
    else if (verb == "press" || verb == "click")
        hands.hold(KXMouseLeft);
    else if (verb == "wheel")
        hands.wheel(std::stof(rest));
    else if (verb == "type")
        hands.type(rest.c_str());
    else if (verb == "compose")
        hands.compose(rest.c_str());
    else if (verb == "hold")
        hands.hold(key(rest));
    else if (verb == "let")
        hands.release(key(rest));
    else if (verb != "release") {
        const std::vector<std::string> names = split(act, "+");
        for (const std::string& name : names)
            hands.hold(key(trimmed(name)));
        for (auto name = names.rbegin(); name != names.rend(); ++name)
            hands.release(key(trimmed(*name)));
    }
    if (verb == "release" || verb == "click")
        hands.release(KXMouseLeft);
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
