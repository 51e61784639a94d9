#pragma once

#include "render/KXRenderContext.h"

struct SDL_Window;

// The OpenGL contexts that windows own. Each gets a number that is never used again, so an object that
// outlives its window can tell that its OpenGL names are gone, even when a new context has the old one's
// address.

/// Enters a context, which must be current, and gives it a number.
unsigned _KXAddGraphicsContext(SDL_Window* window, void* context, KXRenderContext* owner);
/// Strikes a context out; it may not be made current any more.
void _KXRemoveGraphicsContext(unsigned number);
/// Makes a context current. False if it is gone or the platform refuses. The window that the game has made
/// current stays recorded: only setRenderContext() changes that.
bool _KXMakeGraphicsContextCurrent(unsigned number);
/// The window that owns a context, null if it is gone.
KXRenderContext* _KXWindowOfGraphicsContext(unsigned number);

/// What is current in the scope of a context that is gone.
enum class _KXWithoutContext {
    KeepPrevious, ///< The one before. Callers ask the scope whether to go on.
    HaveNone      ///< None, for foreign code that deletes OpenGL names in any case: they name other things in
                  ///< other contexts.
};

/// Makes a context current for as long as the scope lasts, then what was current before, be it none. Costs
/// one comparison when it is current already. The scope of context 0 changes nothing.
class _KXGraphicsContextScope {
public:
    explicit _KXGraphicsContextScope(unsigned number,
                                     _KXWithoutContext whenGone = _KXWithoutContext::KeepPrevious);
    ~_KXGraphicsContextScope();
    _KXGraphicsContextScope(const _KXGraphicsContextScope&) = delete;
    _KXGraphicsContextScope& operator=(const _KXGraphicsContextScope&) = delete;

    /// Whether the context is current now; false when it is gone.
    explicit operator bool() const { return _current; }

private:
    unsigned _previous;
    bool _current;
};
