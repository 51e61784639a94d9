#include "render/GLCheck.h"

#ifdef KOBALTRIX_CHECK_GL

#include "render/KXRenderContext.h"

#include <SDL_opengl.h>

#include <cstdio>
#include <cstdlib>

_KXGLCheck::~_KXGLCheck() {
    const GLenum error = _KXCurrentGraphicsContext ? glGetError() : GL_NO_ERROR;
    if (error == GL_NO_ERROR)
        return;
    std::fprintf(stderr, "OpenGL error 0x%x in %s\n", error, _operation);
    std::abort();
}

#endif
