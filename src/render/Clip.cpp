#include "render/Clip.h"

#include "render/CuttingClip.h"
#include "render/DrawBatch.h"

#include <SDL_opengl.h>

#include <algorithm>

_KXClip _KXCurrentClip() {
    _KXLeaveCutsToOpenGL(); // or its limit would not be all of it
    GLint box[4];
    glGetIntegerv(GL_SCISSOR_BOX, box);
    return {box[0], box[1], box[2], box[3], glIsEnabled(GL_SCISSOR_TEST) == GL_TRUE};
}

void _KXSetClip(const _KXClip& clip) {
    _KXFlushBatch(KXDrawFlushClip);
    glScissor(clip.x, clip.y, std::max(0, clip.width), std::max(0, clip.height));
    (clip.limits ? glEnable : glDisable)(GL_SCISSOR_TEST);
}
