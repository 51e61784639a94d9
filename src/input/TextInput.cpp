#include "input/TextInput.h"

#include "core/ground/LibraryRun.h"
#include "core/ground/Truncate.h"

#include <SDL.h>

namespace {
// What the platform was asked for on behalf of whoever has the keyboard.
struct Request {
    bool begun = false;
    bool startedPlatform = false; // its text input was off before
    unsigned libraryRun = 0;
    SDL_Rect rect = {};
};
} // namespace

static constinit Request request;

void _KXBeginTextInput() {
    _KXEndTextInput();
    if (!SDL_WasInit(SDL_INIT_VIDEO))
        return;
    request = {true, !SDL_IsTextInputActive(), _KXLibraryRun, {}};
    if (request.startedPlatform)
        SDL_StartTextInput();
}

void _KXKeepTextInput() {
    if (!request.begun || request.libraryRun != _KXLibraryRun)
        _KXBeginTextInput();
}

void _KXEndTextInput() {
    const bool ours = request.startedPlatform && request.libraryRun == _KXLibraryRun;
    request = {};
    if (ours && SDL_WasInit(SDL_INIT_VIDEO))
        SDL_StopTextInput();
}

void _KXSetTextInputRect(KXRect rect) {
    const SDL_Rect area = {_KXTruncate(rect.origin.x), _KXTruncate(rect.origin.y),
                           _KXTruncate(rect.size.width), _KXTruncate(rect.size.height)};
    if (!request.begun || SDL_memcmp(&area, &request.rect, sizeof area) == 0)
        return;
    request.rect = area;
    SDL_SetTextInputRect(&area);
}
