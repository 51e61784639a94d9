#include "render/Cursor.h"

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

namespace {
constexpr int nothing = -1;

struct Loan {
    int wanted = nothing; // in this step,
    int shown = nothing;  // and since the last
    SDL_Cursor* cursor = nullptr;
    unsigned run = 0; // that made it
};
} // namespace

static constinit Loan loan;

void _KXLendCursor(KXCursor cursor) { loan.wanted = cursor; }

int _KXLentCursor() { return loan.shown; }

void _KXSettleCursor() {
    const int wanted = std::exchange(loan.wanted, nothing);
    if (loan.run != _KXLibraryRun)
        loan.cursor = nullptr; // the platform has freed it
    else if (wanted == loan.shown)
        return;
    SDL_Cursor* const cursor =
        wanted == nothing ? nullptr : SDL_CreateSystemCursor(systemCursor(static_cast<KXCursor>(wanted)));
    SDL_Cursor* const own = shownInRun == _KXLibraryRun ? shownCursor : nullptr;
    if (cursor || loan.cursor)
        SDL_SetCursor(cursor ? cursor : own ? own : SDL_GetDefaultCursor());
    SDL_FreeCursor(std::exchange(loan.cursor, cursor)); // none is fine
    loan.shown = wanted;
    loan.run = _KXLibraryRun;
}
