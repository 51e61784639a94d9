// What the desktop shows of a window: where it is, how it is framed, whether it covers the display.

#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "core/ground/Truncate.h"
#include "image/Surface.h"

#include <Kobaltrix/KXWindow.h>

#include <SDL_video.h>

#include <cstdio>

void KXWindow::setMinimumSize(KXSize size) {
    SDL_SetWindowMinimumSize(_window, _KXTruncate(size.width), _KXTruncate(size.height));
}

void KXWindow::setMaximumSize(KXSize size) {
    SDL_SetWindowMaximumSize(_window, _KXTruncate(size.width), _KXTruncate(size.height));
}

void KXWindow::setPosition(KXPoint position) {
    SDL_SetWindowPosition(_window, _KXTruncate(position.x), _KXTruncate(position.y));
}

KXPoint KXWindow::getPosition() {
    int x = 0, y = 0;
    SDL_GetWindowPosition(_window, &x, &y);
    x = _KXAnswerTo(_KXQuestion::Left, [x] { return x; });
    y = _KXAnswerTo(_KXQuestion::Top, [y] { return y; });
    return {static_cast<float>(x), static_cast<float>(y)};
}

void KXWindow::hide() { SDL_HideWindow(_window); }

void KXWindow::show() { SDL_ShowWindow(_window); }

void KXWindow::setTitle(const char* title) { SDL_SetWindowTitle(_window, title ? title : ""); }

int KXWindow::setIcon(const KXImage& icon) {
    const _KXSurface surface = _KXSurfaceOf(icon);
    if (!_window || !surface) {
        _KXReportError("The window cannot have that icon: %s", _window ? SDL_GetError() : "it is closed");
        return 0;
    }
    SDL_SetWindowIcon(_window, surface.get());
    return -1;
}

int KXWindow::getDisplayIndex() {
    return _KXAnswerTo(_KXQuestion::Display, [this] { return SDL_GetWindowDisplayIndex(_window); });
}

unsigned KXWindow::id() { return _id; }

int KXWindow::isFocused() {
    return _KXAnswerTo(_KXQuestion::Focus, [this] {
        return static_cast<int>(SDL_GetWindowFlags(_window) &
                                (SDL_WINDOW_INPUT_FOCUS | SDL_WINDOW_MOUSE_FOCUS));
    });
}

int KXWindow::isFullscreen() {
    return _KXAnswerTo(_KXQuestion::Fullscreen, [this] {
        return static_cast<int>(SDL_GetWindowFlags(_window) & SDL_WINDOW_FULLSCREEN);
    });
}

int KXWindow::setFullscreen(KXFullscreen fullscreen) {
    const Uint32 flags = fullscreen == KXFullscreenOff          ? 0
                         : fullscreen == KXFullscreenBorderless ? SDL_WINDOW_FULLSCREEN_DESKTOP
                                                                : SDL_WINDOW_FULLSCREEN;
    const bool set = _window && SDL_SetWindowFullscreen(_window, flags) == 0;
    _invalidateSizeCache();
    if (_KXAnswerTo(_KXQuestion::Fullscreen, [set] { return set; }))
        return -1;
    _KXReportError("The window cannot cover its display: %s", _window ? SDL_GetError() : "it is closed");
    return 0;
}

void KXWindow::enterFullscreen() {
    if (SDL_SetWindowFullscreen(_window, SDL_WINDOW_FULLSCREEN) != 0)
        std::printf("Kobaltrix: SetWindowFullscreen: Error: %s\n", SDL_GetError());
    _invalidateSizeCache();
}

void KXWindow::exitFullscreen() {
    SDL_SetWindowFullscreen(_window, 0);
    _invalidateSizeCache();
}

int KXWindow::setDisplayMode(const KXDisplayMode& mode) {
    const SDL_DisplayMode wanted = {0, mode.width, mode.height, mode.refreshRate, nullptr};
    SDL_DisplayMode nearest;
    const int display = _window ? SDL_GetWindowDisplayIndex(_window) : -1;
    const bool set = display >= 0 && SDL_GetClosestDisplayMode(display, &wanted, &nearest) &&
                     SDL_SetWindowDisplayMode(_window, &nearest) == 0;
    _invalidateSizeCache();
    if (_KXAnswerTo(_KXQuestion::Display, [set] { return set; }))
        return -1;
    _KXReportError("The display has no mode of %d x %d: %s", mode.width, mode.height,
                   _window ? SDL_GetError() : "the window is closed");
    return 0;
}

void KXWindow::maximize() { SDL_MaximizeWindow(_window); }

void KXWindow::minimize() { SDL_MinimizeWindow(_window); }

void KXWindow::restore() { SDL_RestoreWindow(_window); }

void KXWindow::raise() { SDL_RaiseWindow(_window); }

// Whether the platform gives the window a flag.
static int hasFlag(SDL_Window* window, Uint32 flag) {
    return _KXAnswerTo(_KXQuestion::Fullscreen,
                       [=] { return window && (SDL_GetWindowFlags(window) & flag) ? -1 : 0; });
}

int KXWindow::isMaximized() { return hasFlag(_window, SDL_WINDOW_MAXIMIZED); }

int KXWindow::isMinimized() { return hasFlag(_window, SDL_WINDOW_MINIMIZED); }

void KXWindow::setAlwaysOnTop(int onTop) { SDL_SetWindowAlwaysOnTop(_window, onTop ? SDL_TRUE : SDL_FALSE); }

void KXWindow::setBordered(int bordered) { SDL_SetWindowBordered(_window, bordered ? SDL_TRUE : SDL_FALSE); }
