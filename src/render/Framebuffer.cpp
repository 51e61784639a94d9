#include "render/Framebuffer.h"

#include "render/DepthSurface.h"
#include "render/GLFunctions.h"

unsigned _KXCreateFramebuffer(unsigned texture, unsigned* status) {
    *status = 0;
    if (!_KXGL.genFramebuffers)
        return 0;
    GLuint framebuffer = 0;
    _KXGL.genFramebuffers(1, &framebuffer);
    _KXGL.bindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    _KXGL.framebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    *status = _KXGL.checkFramebufferStatus(GL_FRAMEBUFFER);
    if (*status != GL_FRAMEBUFFER_COMPLETE)
        glGetError(); // out of memory: told here, not by the next check that finds it
    return framebuffer;
}

void _KXDeleteFramebuffer(unsigned framebuffer) {
    if (_KXGL.genFramebuffers)
        _KXGL.deleteFramebuffers(1, &framebuffer);
}

void _KXBindFramebuffer(unsigned framebuffer) {
    if (_KXGL.genFramebuffers)
        _KXGL.bindFramebuffer(GL_FRAMEBUFFER, framebuffer);
}

void _KXBindSurface() { _KXBindFramebuffer(_KXSurfaceFramebuffer()); }

_KXSurfaceScope::_KXSurfaceScope() {
    if (!_KXGL.genFramebuffers)
        return;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &_previous);
    _KXBindSurface();
}

_KXSurfaceScope::~_KXSurfaceScope() { _KXBindFramebuffer(static_cast<unsigned>(_previous)); }
