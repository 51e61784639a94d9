#pragma once

#include <SDL_video.h>

/// The OpenGL context that a face's glyphs were made in. Their names mean nothing, or something else, in any
/// other. Remembered by the window's identifier, which the platform layer never gives out twice, because a
/// new context may have the address of a deleted one.
class _KXGlyphOwner {
public:
    /// Whether there is a context to make glyphs in.
    static bool contextIsCurrent() { return SDL_GL_GetCurrentContext() != nullptr; }

    /// Makes the current context the owner.
    void take();
    /// Whether there is an owner.
    bool exists() const { return _context != nullptr; }
    /// Whether there is an owner and a context other than it is current.
    bool isForeign() const;
    bool isCurrent() const;

private:
    friend class _KXGlyphOwnerScope;
    Uint32 _windowID = 0;
    SDL_GLContext _context = nullptr;
};

/// Makes an owner's context current while it lives, so that its glyphs can be deleted. When the owner's
/// window is gone no context is current meanwhile, and deleting does not hit names of the game's.
class _KXGlyphOwnerScope {
public:
    explicit _KXGlyphOwnerScope(const _KXGlyphOwner& owner);
    ~_KXGlyphOwnerScope();
    _KXGlyphOwnerScope(const _KXGlyphOwnerScope&) = delete;
    _KXGlyphOwnerScope& operator=(const _KXGlyphOwnerScope&) = delete;

private:
    bool _switched = false;
    SDL_Window* _window = nullptr;
    SDL_GLContext _context = nullptr;
};
