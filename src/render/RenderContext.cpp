#include "render/RenderContext.h"

KXRenderContext* KXCurrentRenderContext() { return _KXCurrentRenderContext; }
