#include "render/KXRenderContext.h"

KXRenderContext* KXCurrentRenderContext() { return _KXCurrentRenderContext; }
