#include "render/ContextParts.h"

#include "core/ground/HeapGlobal.h"
#include "render/KXRenderContext.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <vector>

static constinit _KXHeapGlobal<std::vector<_KXContextParts>> parts;

void _KXAddContextParts(unsigned context) {
    _KXCurrentDriver = _KXDriverNamed(reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    parts.get().push_back({context, _KXCurrentDriver});
}

void _KXRemoveContextParts(unsigned context) {
    std::erase_if(parts.get(), [context](const _KXContextParts& of) { return of.context == context; });
    if (parts.get().empty())
        parts.free();
}

_KXContextParts& _KXCurrentContextParts() {
    return *std::ranges::find(parts.get(), _KXCurrentGraphicsContext, &_KXContextParts::context);
}

void _KXSetCurrentDriver(_KXDriver driver) { _KXCurrentDriver = _KXCurrentContextParts().driver = driver; }
