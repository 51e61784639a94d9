#include "input/TextInput.h"

#include "core/ground/LibraryRun.h"
#include "core/ground/Truncate.h"
#include "input/Keyboard.h"
#include "util/Utf8.h"

#include <SDL.h>

#include <algorithm>

namespace {
// What the platform was asked for on behalf of whoever has the keyboard.
struct Request {
    bool collects = false;
    bool startedPlatform = false; // its text input was off before
    unsigned libraryRun = 0;
    SDL_Rect rect = {};
};
} // namespace

static constinit Request request;

void _KXSetTypedText(std::string_view text) {
    if (!request.collects || _KXIsShortcutHeld())
        return;
    _KXSetComposedText({});
    if (text.size() > sizeof _KXTextInput.typed - _KXTextInput.typedSize)
        return;
    std::ranges::copy(text, _KXTextInput.typed + _KXTextInput.typedSize);
    _KXTextInput.typedSize += text.size();
}

void _KXSetComposedText(std::string_view text) {
    if (!request.collects)
        return;
    auto& composition = _KXTextInput.composition;
    std::ranges::fill(composition, 0);
    std::ranges::copy(text.substr(0, _KXCharacterStart(text, sizeof composition - 1)), composition);
}

void _KXBeginTextInput() {
    _KXEndTextInput();
    if (!SDL_WasInit(SDL_INIT_VIDEO))
        return;
    request = {true, !SDL_IsTextInputActive(), _KXLibraryRun, {}};
    if (request.startedPlatform)
        SDL_StartTextInput();
}

void _KXKeepTextInput() {
    if (!request.collects || request.libraryRun != _KXLibraryRun)
        _KXBeginTextInput();
}

void _KXEndTextInput() {
    _KXTextInput = {};
    const bool ours = request.startedPlatform && request.libraryRun == _KXLibraryRun;
    request = {};
    if (ours && SDL_WasInit(SDL_INIT_VIDEO))
        SDL_StopTextInput();
}

std::string _KXTakeTypedText() {
    std::string text(_KXTextInput.typed, _KXTextInput.typedSize);
    std::fill_n(_KXTextInput.typed, _KXTextInput.typedSize, 0);
    _KXTextInput.typedSize = 0;
    return text;
}

std::string _KXComposedText() { return _KXTextInput.composition; }

void _KXSetTextInputRect(KXRect rect) {
    const SDL_Rect area = {_KXTruncate(rect.origin.x), _KXTruncate(rect.origin.y),
                           _KXTruncate(rect.size.width), _KXTruncate(rect.size.height)};
    if (!request.collects || SDL_memcmp(&area, &request.rect, sizeof area) == 0)
        return;
    request.rect = area;
    SDL_SetTextInputRect(&area);
}
