#include "render/GraphicsContext.h"

#include "render/DrawBatch.h"
#include "render/FillProgram.h"
#include "render/KXRenderContext.h"

#include <SDL_video.h>

#include <algorithm>
#include <vector>

namespace {
struct GraphicsContext {
    unsigned number;
    SDL_Window* window;
    void* context;
    KXRenderContext* owner;
};
} // namespace

// On the heap while there is any: a static object of the game may close its window while the process ends.
static constinit std::vector<GraphicsContext>* contexts = nullptr;
static constinit unsigned lastNumber = 0;

static const GraphicsContext* find(unsigned number) {
    if (!contexts)
        return nullptr;
    const auto found =
        std::find_if(contexts->begin(), contexts->end(),
                     [number](const GraphicsContext& context) { return context.number == number; });
    return found == contexts->end() ? nullptr : &*found;
}

unsigned _KXAddGraphicsContext(SDL_Window* window, void* context, KXRenderContext* owner) {
    if (!contexts)
        contexts = new std::vector<GraphicsContext>;
    contexts->push_back({++lastNumber, window, context, owner});
    return lastNumber;
}

void _KXRemoveGraphicsContext(unsigned number) {
    const GraphicsContext* found = find(number);
    if (!found)
        return;
    if (_KXCurrentWindowRenderContext == found->owner)
        _KXCurrentWindowRenderContext = nullptr;
    if (_KXCurrentGraphicsContext == number) {
        _KXDropBatch(); // nobody will see it
        _KXCurrentGraphicsContext = 0;
    }
    _KXForgetFillProgram(number);
    contexts->erase(contexts->begin() + (found - contexts->data()));
    if (contexts->empty()) {
        delete contexts;
        contexts = nullptr;
    }
}

bool _KXMakeGraphicsContextCurrent(unsigned number) {
    if (number != _KXCurrentGraphicsContext)
        _KXFlushBatch(KXDrawFlushTarget);
    const GraphicsContext* found = find(number);
    if (!found || SDL_GL_MakeCurrent(found->window, found->context) != 0)
        return false;
    _KXCurrentGraphicsContext = number;
    return true;
}

KXRenderContext* _KXWindowOfGraphicsContext(unsigned number) {
    const GraphicsContext* found = find(number);
    return found ? found->owner : nullptr;
}

static void makeNoContextCurrent() {
    _KXFlushBatch(KXDrawFlushTarget);
    SDL_GL_MakeCurrent(nullptr, nullptr);
    _KXCurrentGraphicsContext = 0;
}

_KXGraphicsContextScope::_KXGraphicsContextScope(unsigned number, _KXWithoutContext whenGone)
    : _previous(_KXCurrentGraphicsContext),
      _current(number != 0 && (number == _previous || _KXMakeGraphicsContextCurrent(number))) {
    if (number != 0 && !_current && whenGone == _KXWithoutContext::HaveNone)
        makeNoContextCurrent();
}

_KXGraphicsContextScope::~_KXGraphicsContextScope() {
    if (_previous == _KXCurrentGraphicsContext)
        return;
    if (_previous != 0)
        _KXMakeGraphicsContextCurrent(_previous);
    else
        makeNoContextCurrent();
}
