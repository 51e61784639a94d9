#include <Kobaltrix/KXCursor.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/LibraryRun.h"
#include "core/ground/Truncate.h"
#include "image/Surface.h"
#include "render/KXTexture.h"

#include <SDL_mouse.h>

#include <utility>

static SDL_SystemCursor systemCursor(KXCursor cursor) {
    switch (cursor) {
    case KXCursorText:
        return SDL_SYSTEM_CURSOR_IBEAM;
    case KXCursorHand:
        return SDL_SYSTEM_CURSOR_HAND;
    case KXCursorCrosshair:
        return SDL_SYSTEM_CURSOR_CROSSHAIR;
    case KXCursorWait:
        return SDL_SYSTEM_CURSOR_WAIT;
    case KXCursorMove:
        return SDL_SYSTEM_CURSOR_SIZEALL;
    case KXCursorWidth:
        return SDL_SYSTEM_CURSOR_SIZEWE;
    case KXCursorHeight:
        return SDL_SYSTEM_CURSOR_SIZENS;
    case KXCursorForbidden:
        return SDL_SYSTEM_CURSOR_NO;
    case KXCursorArrow:
        break;
    }
    return SDL_SYSTEM_CURSOR_ARROW;
}

// The cursor in use. The platform frees it when the library ends, and shows the one before while it is
// changed.
static constinit SDL_Cursor* shownCursor = nullptr;
static constinit unsigned shownInRun = 0;

static int show(SDL_Cursor* cursor) {
    if (!cursor) {
        _KXReportError("The pointer's shape cannot be set: %s", SDL_GetError());
        return 0;
    }
    SDL_SetCursor(cursor);
    if (SDL_Cursor* const previous = std::exchange(shownCursor, cursor); shownInRun == _KXLibraryRun)
        SDL_FreeCursor(previous);
    shownInRun = _KXLibraryRun;
    return -1;
}

int KXSetCursor(KXCursor cursor) { return show(SDL_CreateSystemCursor(systemCursor(cursor))); }

int KXSetCursor(KXTexture& texture, KXPoint hotSpot) {
    const _KXSurface surface(texture._newSurface());
    return show(surface ? SDL_CreateColorCursor(surface.get(), _KXTruncate(hotSpot.x), _KXTruncate(hotSpot.y))
                        : nullptr);
}
