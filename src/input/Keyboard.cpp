#include "input/Keyboard.h"

#include "input/StepInput.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXString.h>

#include <SDL_keyboard.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>

namespace {
struct KeyInfo {
    const char* name;
    int keycode; // 0: no key of the platform sets it
};

constexpr const char* unknown = "Unknown";

// Indexed by key number. The key-pad digits share the names of the digits, and the semicolon is called a
// colon: games that show or store these names rely on them.
constexpr KeyInfo keys[_KXKeyCount] = {
    {unknown, 0},
    {"A", 'a'},
    {"B", 'b'},
    {"C", 'c'},
    {"D", 'd'},
    {"E", 'e'},
    {"F", 'f'},
    {"G", 'g'},
    {"H", 'h'},
    {"I", 'i'},
    {"J", 'j'},
    {"K", 'k'},
    {"L", 'l'},
    {"M", 'm'},
    {"N", 'n'},
    {"O", 'o'},
    {"P", 'p'},
    {"Q", 'q'},
    {"R", 'r'},
    {"S", 's'},
    {"T", 't'},
    {"U", 'u'},
    {"V", 'v'},
    {"W", 'w'},
    {"X", 'x'},
    {"Y", 'y'},
    {"Z", 'z'},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {unknown, 0},
    {"Return", SDLK_RETURN},
    {"Tab", SDLK_TAB},
    {"Delete", SDLK_DELETE},
    {"Backspace", SDLK_BACKSPACE},
    {"\"", SDLK_QUOTE},
    {",", SDLK_COMMA},
    {"-", SDLK_MINUS},
    {".", SDLK_PERIOD},
    {"/", SDLK_SLASH},
    {"\\", SDLK_BACKSLASH},
    {":", SDLK_COLON},
    {":", SDLK_SEMICOLON},
    {"(", SDLK_LEFTPAREN},
    {")", SDLK_RIGHTPAREN},
    {"[", SDLK_LEFTBRACKET},
    {"]", SDLK_RIGHTBRACKET},
    {"Escape", SDLK_ESCAPE},
    {"`", SDLK_BACKQUOTE},
    {"0", '0'},
    {"1", '1'},
    {"2", '2'},
    {"3", '3'},
    {"4", '4'},
    {"5", '5'},
    {unknown, 0},
    {"6", '6'},
    {"7", '7'},
    {"8", '8'},
    {"9", '9'},
    {"0", SDLK_KP_0},
    {"1", SDLK_KP_1},
    {"2", SDLK_KP_2},
    {"3", SDLK_KP_3},
    {"4", SDLK_KP_4},
    {"5", SDLK_KP_5},
    {"6", SDLK_KP_6},
    {"7", SDLK_KP_7},
    {"8", SDLK_KP_8},
    {"9", SDLK_KP_9},
    {"Num Pad .", SDLK_KP_PERIOD},
    {"Num Pad /", SDLK_KP_DIVIDE},
    {"Num Pad *", SDLK_KP_MULTIPLY},
    {"Num Pad -", SDLK_KP_MINUS},
    {"Num Pad +", SDLK_KP_PLUS},
    {"Num Pad Enter", SDLK_KP_ENTER},
    {"Num Pad =", SDLK_KP_EQUALS},
    {"Up", SDLK_UP},
    {"Right", SDLK_RIGHT},
    {"Left", SDLK_LEFT},
    {"Down", SDLK_DOWN},
    {"Home", SDLK_HOME},
    {"End", SDLK_END},
    {"Page Up", SDLK_PAGEUP},
    {"Page Down", SDLK_PAGEDOWN},
    {"F1", SDLK_F1},
    {"F2", SDLK_F2},
    {"F3", SDLK_F3},
    {"F4", SDLK_F4},
    {"F5", SDLK_F5},
    {"F6", SDLK_F6},
    {"F7", SDLK_F7},
    {"F8", SDLK_F8},
    {"F9", SDLK_F9},
    {"F10", SDLK_F10},
    {"F11", SDLK_F11},
    {"F12", SDLK_F12},
    {"F13", SDLK_F13},
    {"F14", SDLK_F14},
    {"F15", SDLK_F15},
    {"Left Shift", SDLK_LSHIFT},
    {"Right Shift", SDLK_RSHIFT},
    {"Left Alt", SDLK_LALT},
    {"Right Alt", SDLK_RALT},
    {"Num Lock", SDLK_NUMLOCKCLEAR},
    {"Caps Lock", SDLK_CAPSLOCK},
    {"Scroll Lock", SDLK_SCROLLLOCK},
    {"Left Super", 0},
    {"Right Super", 0},
    {"Right Command", SDLK_RGUI},
    {"Left Command", SDLK_LGUI},
    {"Space", SDLK_SPACE},
    {"=", SDLK_EQUALS},
    {"Left Control", SDLK_LCTRL},
    {"Right Control", SDLK_RCTRL},
};

// 0 for a keycode that sets none of these keys.
int keyInTable(int keycode) {
    const auto* found = std::find_if(std::begin(keys) + 1, std::end(keys), [keycode](const KeyInfo& key) {
        return key.keycode && key.keycode == keycode;
    });
    return found == std::end(keys) ? 0 : static_cast<int>(found - keys);
}

// Where the numbers of further keys begin: those of a position, and those of a character.
constexpr int firstOfPositions = 200, firstOfCharacters = 1000;
constexpr int lastCharacter = 0x10FFFF;

// Keys of positions that SDL names differently from system to system, or alike.
constexpr std::pair<int, const char*> renamed[] = {{KXKeyMenu, "Menu"},
                                                   {firstOfPositions + SDL_SCANCODE_MENU, "Other Menu"}};

SDL_Scancode scancode(int position) {
    return static_cast<SDL_Scancode>(position > 0 && position < SDL_NUM_SCANCODES ? position : 0);
}

bool isKey(int key) { return key >= 1 && key < _KXKeyCount; }

void forgetReport(int key) {
    _KXKeyboard.toldGame[key] = _KXKeyboard.toldTextEntry[key] = 0;
    _KXKeyboard.toldTime[key] = _KXNeverReported;
}
} // namespace

void _KXInitKeys() { KXUnsetKeys(); }

void KXUnsetKeys() {
    _KXKeyboard = {};
    _KXReleaseKeys();
}

void _KXSetKeyToValue(int keycode, int value) {
    if (const int key = keyInTable(keycode))
        _KXKeyboard.held[key] = value;
}

void _KXSetKey(int keycode) { _KXSetKeyToValue(keycode, -1); }

void _KXUnsetKey(int keycode) {
    _KXSetKeyToValue(keycode, 0);
    for (int key = 0; key < _KXKeyCount; ++key)
        if (!_KXKeyboard.held[key])
            forgetReport(key);
}

bool _KXIsShortcutHeld() {
    const bool command = _KXKeyboard.modifiers & (KMOD_CTRL | KMOD_GUI);
    const bool otherLevel = _KXKeyboard.modifiers & (KMOD_ALT | KMOD_MODE);
    return command && !otherLevel;
}

int _KXKey(int key, int once, std::int32_t* downTable, int repeat) {
    if (!isKey(key))
        return 0;
    const bool held = _KXKeyboard.held[key];
    std::int32_t& time = _KXKeyboard.toldTime[key];
    if (!once && held)
        return -1;
    if (once && downTable[key])
        return repeat && _KXRepeatIsDue(time) ? -1 : 0;
    if (once && held) {
        downTable[key] = -1;
        time = static_cast<std::int32_t>(_KXLogicCurrentTime);
        return -1;
    }
    downTable[key] = 0;
    time = _KXNeverReported;
    return 0;
}

int KXKey(int key) { return KXKey(key, 0); }

int KXKey(int key, int once) { return _KXKey(key, once, _KXKeysDown, 0); }

int _KXKeyTextEntry(int key, int once) { return _KXKey(key, once, _KXKeysTextEntryDown, 0); }

int KXKeyWithDelayedRepeat(int key) { return _KXKey(key, -1, _KXKeysDown, -1); }

int KXKeyPressed() {
    const auto* held =
        std::find_if(std::begin(_KXKeys), std::end(_KXKeys), [](std::int32_t key) { return key; });
    return held == std::end(_KXKeys) ? 0 : static_cast<int>(held - _KXKeys);
}

const char* KXKeyToString(int key) { return isKey(key) ? keys[key].name : unknown; }

int _KXKeyNumberOf(int keycode) {
    if (const int key = keyInTable(keycode >= 'A' && keycode <= 'Z' ? keycode - 'A' + 'a' : keycode))
        return key;
    if (keycode & SDLK_SCANCODE_MASK)
        return firstOfPositions + (keycode & ~SDLK_SCANCODE_MASK);
    return keycode > 0 && keycode <= lastCharacter ? firstOfCharacters + keycode : KXKeyNone;
}

int KXKeyAtPosition(int position) { return _KXKeyNumberOf(SDL_GetKeyFromScancode(scancode(position))); }

// The names of KXKeyToString(), told apart.
static std::string nameInTable(int key) {
    if (key == KXKeySemicolon)
        return ";";
    return (key >= KXKeyPad0 && key <= KXKeyPad9 ? "Num Pad " : "") + std::string(keys[key].name);
}

std::string _KXKeyNameText(int key) {
    std::string name;
    if (isKey(key))
        name = nameInTable(key);
    else if (key >= firstOfPositions && key < firstOfCharacters)
        name = SDL_GetScancodeName(scancode(key - firstOfPositions));
    else if (key > firstOfCharacters && key <= firstOfCharacters + lastCharacter)
        _KXAppendCharacter(name, static_cast<char32_t>(key - firstOfCharacters));
    for (const auto& [number, text] : renamed)
        if (number == key)
            name = text;
    return name.empty() ? unknown : name;
}

const char* KXKeyName(int key) { return KXTempString("%s", _KXKeyNameText(key).c_str()); }

int KXKeyFromName(const char* name) {
    if (!name || std::strcmp(name, unknown) == 0)
        return KXKeyNone;
    for (int key = 1; key < _KXKeyCount; ++key)
        if (nameInTable(key) == name)
            return key;
    for (const auto& [key, text] : renamed)
        if (SDL_strcasecmp(name, text) == 0)
            return key;
    if (SDL_GetScancodeFromName(name)) // in any case: "space" is the key with the name "Space"
        return _KXKeyNumberOf(SDL_GetKeyFromName(name));
    const _KXLegibleText legible(name);
    std::string_view text = legible.get();
    const char32_t character = _KXTakeCharacter(text);
    return character && text.empty() && legible.get() == name
               ? firstOfCharacters + static_cast<int>(character)
               : KXKeyNone;
}
