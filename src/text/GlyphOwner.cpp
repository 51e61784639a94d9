#include "text/GlyphOwner.h"

static Uint32 currentWindowID() {
    SDL_Window* window = SDL_GL_GetCurrentWindow();
    return window ? SDL_GetWindowID(window) : 0;
}

void _KXGlyphOwner::take() {
    _windowID = currentWindowID();
    _context = SDL_GL_GetCurrentContext();
}

bool _KXGlyphOwner::isCurrent() const {
    return _context == SDL_GL_GetCurrentContext() && _windowID == currentWindowID();
}

bool _KXGlyphOwner::isForeign() const { return exists() && contextIsCurrent() && !isCurrent(); }

_KXGlyphOwnerScope::_KXGlyphOwnerScope(const _KXGlyphOwner& owner) {
    if (!owner.exists() || owner.isCurrent())
        return;
    _window = SDL_GL_GetCurrentWindow();
    _context = SDL_GL_GetCurrentContext();
    _switched = true;
    SDL_Window* home = SDL_GetWindowFromID(owner._windowID);
    if (!home || SDL_GL_MakeCurrent(home, owner._context) != 0)
        SDL_GL_MakeCurrent(nullptr, nullptr);
}

_KXGlyphOwnerScope::~_KXGlyphOwnerScope() {
    if (_switched)
        SDL_GL_MakeCurrent(_window, _context);
}
