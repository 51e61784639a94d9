#include "input/InputText.h"

#include "input/Keyboard.h"

#include <Kobaltrix/KXPads.h>
#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <utility>

namespace {
// Enters names with a bar between two for numbers that follow each other; a number may have none.
constexpr void enter(std::span<std::string_view> names, std::size_t first, std::string_view list) {
    for (std::size_t start = 0; start <= list.size(); ++first) {
        const std::size_t end = std::min(list.find('|', start), list.size());
        names[first] = list.substr(start, end - start);
        start = end + 1;
    }
}

constexpr auto positionNames = [] {
    std::array<std::string_view, 512> names = {};
    enter(names, KXPositionA,
          "A|B|C|D|E|F|G|H|I|J|K|L|M|N|O|P|Q|R|S|T|U|V|W|X|Y|Z|1|2|3|4|5|6|7|8|9|0|"
          "Return|Escape|Backspace|Tab|Space|-|=|[|]|\\||;|'|`|,|.|/|Caps Lock|"
          "F1|F2|F3|F4|F5|F6|F7|F8|F9|F10|F11|F12|Print Screen|Scroll Lock|Pause|"
          "Insert|Home|Page Up|Delete|End|Page Down|Right|Left|Down|Up|"
          "Num Lock|Num Pad /|Num Pad *|Num Pad -|Num Pad +|Num Pad Enter|"
          "Num Pad 1|Num Pad 2|Num Pad 3|Num Pad 4|Num Pad 5|Num Pad 6|Num Pad 7|Num Pad 8|Num Pad 9|"
          "Num Pad 0|Num Pad .|Beside Left Shift|Menu||Num Pad =");
    enter(names, KXPositionLeftControl,
          "Left Control|Left Shift|Left Alt|Left Command|Right Control|Right Shift|Right Alt|Right Command");
    return names;
}();

constexpr auto mouseNames = [] {
    std::array<std::string_view, 32> names = {};
    enter(names, KXMouseLeft, "Left|Right|Middle");
    enter(names, KXMouseBack, "Back|Forward");
    return names;
}();

bool isWheel(int button) { return button >= KXMouseWheelDown && button <= KXMouseWheelRight; }

std::string nameIn(std::span<const std::string_view> names, int number) {
    const auto index = static_cast<std::size_t>(number);
    return index < names.size() && !names[index].empty() ? std::string(names[index])
                                                         : '#' + std::to_string(number);
}

// The number that nameIn() gives the name to, -1 for none.
int numberIn(std::span<const std::string_view> names, const std::string& name) {
    int number = static_cast<int>(std::ranges::find(names, name) - names.begin());
    if (name.starts_with('#'))
        std::from_chars(name.data() + 1, name.data() + name.size(), number);
    const bool isThere = number >= 0 && static_cast<std::size_t>(number) < names.size();
    return isThere && nameIn(names, number) == name ? number : -1;
}

constexpr int noPad = -2;

// The pad that "pad" or "pad2" stands for.
int padFrom(std::string_view word) {
    if (word == "pad")
        return KXAnyPad;
    const bool hasDigit = word.size() == 4 && word.starts_with("pad") && word[3] >= '1';
    const int pad = hasDigit ? word[3] - '1' : noPad;
    return pad < KXMaximumPads ? pad : noPad;
}

// As it would be written, also for what is no input.
std::string textOf(const KXInput& input) {
    switch (input.kind) {
    case KXInputKindKey:
        return "key " + _KXKeyNameText(input.number);
    case KXInputKindPosition:
        return "position " + nameIn(positionNames, input.number);
    case KXInputKindMouseButton:
        return "mouse " + nameIn(mouseNames, input.number);
    case KXInputKindPadButton:
        return "pad" + (input.pad == KXAnyPad ? "" : std::to_string(input.pad + 1LL)) + ' ' +
               KXPadButtonName(input.number);
    default:
        return "";
    }
}
} // namespace

bool _KXIsPlainText(std::string_view text) {
    return !text.empty() && text.front() != ' ' && text.back() != ' ' &&
           std::ranges::none_of(text, [](unsigned char byte) { return byte < ' ' || byte == 0x7F; });
}

std::string _KXInputToText(const KXInput& input) {
    std::string text = textOf(input);
    return KXInputsAreEqual(_KXInputFromText(text), input) ? text : "";
}

KXInput _KXInputFromText(std::string_view text) {
    if (!_KXIsPlainText(text))
        return {};
    const std::size_t blank = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, blank);
    const std::string name(text.substr(std::min(blank + 1, text.size())));
    if (word == "key")
        if (const int key = KXKeyFromName(name.c_str()))
            return KXInputOfKey(key);
    if (word == "position")
        if (const int position = numberIn(positionNames, name); position > 0)
            return KXInputOfPosition(position);
    if (word == "mouse")
        if (const int button = numberIn(mouseNames, name); button >= 0 && !isWheel(button))
            return KXInputOfMouse(button);
    if (const int pad = padFrom(word); pad != noPad)
        if (const int button = KXPadButtonFromName(name.c_str()); button >= 0)
            return KXInputOfPad(button, pad);
    return {};
}

KXInput KXInputOfKey(int key) { return {KXInputKindKey, key, 0}; }
KXInput KXInputOfPosition(int position) { return {KXInputKindPosition, position, 0}; }
KXInput KXInputOfMouse(int button) { return {KXInputKindMouseButton, button, 0}; }
KXInput KXInputOfPad(int button, int pad) { return {KXInputKindPadButton, button, pad}; }

int KXInputsAreEqual(KXInput a, KXInput b) {
    return a.kind == b.kind && a.number == b.number && a.pad == b.pad ? -1 : 0;
}

static std::string shownName(const KXInput& input) {
    std::string text = _KXInputToText(input);
    if (input.kind == KXInputKindPosition)
        if (std::string key = _KXInputToText(KXInputOfKey(KXKeyAtPosition(input.number))); !key.empty())
            text = std::move(key);
    if (input.kind == KXInputKindKey || input.kind == KXInputKindPosition || text.empty())
        return text.substr(text.find(' ') + 1);
    text[0] = static_cast<char>(text[0] - 'a' + 'A');
    if (input.kind == KXInputKindPadButton && input.pad != KXAnyPad)
        text.insert(std::string_view("Pad").size(), 1, ' ');
    return text;
}

const char* KXInputName(KXInput input) {
    const std::string name = shownName(input);
    return KXTempString("%s", name.empty() ? "None" : name.c_str());
}
