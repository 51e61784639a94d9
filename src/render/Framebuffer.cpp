#include "render/Framebuffer.h"

#include <SDL_opengl.h>
#include <SDL_video.h>

#include <string>

namespace {
struct Functions {
    PFNGLGENFRAMEBUFFERSPROC generate;
    PFNGLDELETEFRAMEBUFFERSPROC destroy;
    PFNGLBINDFRAMEBUFFERPROC bind;
    PFNGLFRAMEBUFFERTEXTURE2DPROC attachTexture;
    PFNGLCHECKFRAMEBUFFERSTATUSPROC status;

    bool complete() const { return generate && destroy && bind && attachTexture && status; }
};
} // namespace

static constinit Functions gl = {};

template<class Function>
static void load(Function& function, const std::string& name) {
    function = reinterpret_cast<Function>(SDL_GL_GetProcAddress(name.c_str()));
}

static Functions loadAll(const char* suffix) {
    Functions functions = {};
    load(functions.generate, std::string("glGenFramebuffers") + suffix);
    load(functions.destroy, std::string("glDeleteFramebuffers") + suffix);
    load(functions.bind, std::string("glBindFramebuffer") + suffix);
    load(functions.attachTexture, std::string("glFramebufferTexture2D") + suffix);
    load(functions.status, std::string("glCheckFramebufferStatus") + suffix);
    return functions;
}

void _KXLoadFramebufferFunctions() {
    gl = loadAll("");
    if (!gl.complete())
        gl = loadAll("EXT");
    if (!gl.complete())
        gl = {};
}

unsigned _KXCreateFramebuffer(unsigned texture, unsigned* status) {
    *status = 0;
    if (!gl.complete())
        return 0;
    GLuint framebuffer = 0;
    gl.generate(1, &framebuffer);
    gl.bind(GL_FRAMEBUFFER, framebuffer);
    gl.attachTexture(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    *status = gl.status(GL_FRAMEBUFFER);
    return framebuffer;
}

void _KXDeleteFramebuffer(unsigned framebuffer) {
    if (gl.complete())
        gl.destroy(1, &framebuffer);
}

void _KXBindFramebuffer(unsigned framebuffer) {
    if (gl.complete())
        gl.bind(GL_FRAMEBUFFER, framebuffer);
}

_KXDefaultFramebufferScope::_KXDefaultFramebufferScope() {
    if (!gl.complete())
        return;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &_previous);
    _KXBindFramebuffer(0);
}

_KXDefaultFramebufferScope::~_KXDefaultFramebufferScope() {
    if (_previous)
        _KXBindFramebuffer(static_cast<unsigned>(_previous));
}
