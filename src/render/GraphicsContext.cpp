#include "render/GraphicsContext.h"

#include "core/ground/HeapGlobal.h"
#include "render/ContextParts.h"
#include "render/DepthSurface.h"
#include "render/DrawBatch.h"
#include "render/GlyphStore.h"

#include <SDL_video.h>

#include <vector>

namespace {
struct GraphicsContext {
    unsigned number;
    SDL_Window* window;
    void* context;
    KXRenderContext* owner;
};
} // namespace

static constinit _KXHeapGlobal<std::vector<GraphicsContext>> contexts;
static constinit unsigned lastNumber = 0;

static const GraphicsContext* find(unsigned number) {
    if (contexts.find())
        for (const GraphicsContext& context : contexts.get())
            if (context.number == number)
                return &context;
    return nullptr;
}

unsigned _KXAddGraphicsContext(SDL_Window* window, void* context, KXRenderContext* owner) {
    contexts.get().push_back({++lastNumber, window, context, owner});
    _KXAddContextParts(lastNumber);
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
    _KXForgetDepthSurface(number);
    _KXForgetGlyphsIn(number);
    _KXRemoveContextParts(number);
    contexts.get().erase(contexts.get().begin() + (found - contexts.get().data()));
    if (contexts.get().empty())
        contexts.free();
}

bool _KXMakeGraphicsContextCurrent(unsigned number) {
    if (number != _KXCurrentGraphicsContext)
        _KXFlushBatch(KXDrawFlushTarget);
    const GraphicsContext* found = find(number);
    if (!found || SDL_GL_MakeCurrent(found->window, found->context) != 0)
        return false;
    _KXCurrentGraphicsContext = number;
    _KXCurrentDriver = _KXCurrentContextParts().driver;
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
