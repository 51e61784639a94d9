#include <Kobaltrix/KXDisplay.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"

#include <Kobaltrix/KXString.h>

#include <SDL_video.h>

#include <algorithm>

// Each number is an answer of the world's of its own: a replay on another desktop gives the same.
static int answer(int number) {
    return _KXAnswerTo(_KXQuestion::Display, [number] { return number; });
}

static KXRect answer(const SDL_Rect& rect) {
    const int x = answer(rect.x), y = answer(rect.y), width = answer(rect.w), height = answer(rect.h);
    return {{static_cast<float>(x), static_cast<float>(y)},
            {static_cast<float>(width), static_cast<float>(height)}};
}

static KXDisplayMode answer(const SDL_DisplayMode& mode) {
    const int width = answer(mode.w), height = answer(mode.h);
    return {width, height, answer(mode.refresh_rate)};
}

int KXNumberOfDisplays() { return answer(std::max(0, SDL_GetNumVideoDisplays())); }

KXDisplay KXDisplayAt(int index) {
    SDL_Rect bounds = {}, usable = {};
    SDL_DisplayMode mode = {};
    const bool found =
        SDL_GetDisplayBounds(index, &bounds) == 0 && SDL_GetDesktopDisplayMode(index, &mode) == 0;
    if (found && SDL_GetDisplayUsableBounds(index, &usable) != 0)
        usable = bounds;
    if (!answer(found)) {
        _KXReportError("There is no display %d: %s", index, SDL_GetError());
        return {"", KXZeroRect, KXZeroRect, {0, 0, 0}, 0};
    }
    const std::string name = _KXTextAnswer(SDL_GetDisplayName(index));
    const KXRect all = answer(bounds), free = answer(usable);
    const KXDisplayMode now = answer(mode);
    return {KXTempString("%s", name.c_str()), all, free, now,
            answer(std::max(0, SDL_GetNumDisplayModes(index)))};
}

KXDisplayMode KXDisplayModeAt(int display, int index) {
    SDL_DisplayMode mode = {};
    const bool found = SDL_GetDisplayMode(display, index, &mode) == 0;
    if (answer(found))
        return answer(mode);
    _KXReportError("Display %d has no mode %d: %s", display, index, SDL_GetError());
    return {0, 0, 0};
}
