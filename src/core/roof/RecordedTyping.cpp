#include "core/roof/RecordedTyping.h"

#include "ui/Focus.h"
#include "util/Utf8.h"

#include <SDL_stdinc.h>

#include <algorithm>

bool _KXTypingIsSecret() { return _KXFocus::nextTypingMayBeSecret(); }

std::string _KXHiddenText(std::string_view text) {
    std::string result;
    while (_KXTakeCharacter(text))
        result += 'x';
    return result;
}

// Whether a key types a character, with the modifiers that are held.
static bool types(const SDL_Keysym& key) {
    const bool isShortcut = (key.mod & KMOD_GUI) || ((key.mod & KMOD_CTRL) && !(key.mod & KMOD_ALT));
    const bool isOnPad = key.scancode >= SDL_SCANCODE_KP_DIVIDE && key.scancode <= SDL_SCANCODE_KP_PERIOD &&
                         key.scancode != SDL_SCANCODE_KP_ENTER;
    const bool isCharacter = key.sym >= ' ' && !(key.sym & SDLK_SCANCODE_MASK) && key.sym != SDLK_DELETE;
    return !isShortcut && (isCharacter || isOnPad);
}

void _KXRecordedKeys::write(SDL_KeyboardEvent& event, bool secret) {
    SDL_Keysym& key = event.keysym;
    const auto held = std::find_if(_keys.begin(), _keys.end(),
                                   [&key](const Key& each) { return each.pressed == key.scancode; });
    const SDL_Scancode shown = held != _keys.end()    ? held->shown
                               : secret && types(key) ? freeLetter()
                                                      : key.scancode;
    if (event.type == SDL_KEYDOWN && held == _keys.end())
        _keys.push_back({key.scancode, shown});
    else if (event.type == SDL_KEYUP && held != _keys.end())
        _keys.erase(held);
    if (shown == key.scancode)
        return;
    key.scancode = shown;
    key.sym = SDLK_a + (shown - SDL_SCANCODE_A);
}

SDL_Scancode _KXRecordedKeys::freeLetter() const {
    for (int letter = SDL_SCANCODE_X; letter > SDL_SCANCODE_A; --letter)
        if (std::none_of(_keys.begin(), _keys.end(),
                         [letter](const Key& each) { return each.shown == letter; }))
            return static_cast<SDL_Scancode>(letter);
    return SDL_SCANCODE_A;
}

void _KXHideTyping(SDL_Event& event, std::string& text) {
    const auto hide = [&text](const char* typed) { text = _KXHiddenText(typed); };
    switch (event.type) {
    case SDL_TEXTINPUT:
        hide(event.text.text);
        SDL_strlcpy(event.text.text, text.c_str(), sizeof event.text.text);
        break;
    case SDL_TEXTEDITING:
        hide(event.edit.text);
        SDL_strlcpy(event.edit.text, text.c_str(), sizeof event.edit.text);
        break;
    case SDL_TEXTEDITING_EXT:
        hide(event.editExt.text ? event.editExt.text : "");
        event.editExt.text = text.data();
        break;
    default:
        break;
    }
}
