#include "render/GLFunctions.h"

#include <SDL_video.h>

#include <cstdio>

// Nothing here may fail for want of memory: other windows draw by these functions, too.
template<class Function>
static bool load(Function& function, const char* name, const char* suffix = "") {
    char full[64];
    std::snprintf(full, sizeof full, "%s%s", name, suffix);
    function = reinterpret_cast<Function>(SDL_GL_GetProcAddress(full));
    return function != nullptr;
}

// Under their present names, or those of the extension they come from.
static bool loadFramebuffers(const char* suffix) {
    return load(_KXGL.genFramebuffers, "glGenFramebuffers", suffix) &&
           load(_KXGL.deleteFramebuffers, "glDeleteFramebuffers", suffix) &&
           load(_KXGL.bindFramebuffer, "glBindFramebuffer", suffix) &&
           load(_KXGL.framebufferTexture2D, "glFramebufferTexture2D", suffix) &&
           load(_KXGL.checkFramebufferStatus, "glCheckFramebufferStatus", suffix);
}

// Loaders may give functions that the driver does not have, so it is asked. Framebuffer objects of this kind
// can be read from and drawn into at once.
static bool loadBlits() {
    const bool known = SDL_GL_ExtensionSupported("GL_ARB_framebuffer_object");
    glGetError(); // of old versions the platform asks what they do not know
    return known && _KXGL.genFramebuffers && load(_KXGL.genRenderbuffers, "glGenRenderbuffers") &&
           load(_KXGL.deleteRenderbuffers, "glDeleteRenderbuffers") &&
           load(_KXGL.bindRenderbuffer, "glBindRenderbuffer") &&
           load(_KXGL.renderbufferStorage, "glRenderbufferStorage") &&
           load(_KXGL.framebufferRenderbuffer, "glFramebufferRenderbuffer") &&
           load(_KXGL.blitFramebuffer, "glBlitFramebuffer");
}

static bool loadPrograms() {
    return load(_KXGL.createShader, "glCreateShader") && load(_KXGL.shaderSource, "glShaderSource") &&
           load(_KXGL.compileShader, "glCompileShader") && load(_KXGL.deleteShader, "glDeleteShader") &&
           load(_KXGL.createProgram, "glCreateProgram") && load(_KXGL.attachShader, "glAttachShader") &&
           load(_KXGL.linkProgram, "glLinkProgram") && load(_KXGL.getProgramiv, "glGetProgramiv") &&
           load(_KXGL.useProgram, "glUseProgram") && load(_KXGL.deleteProgram, "glDeleteProgram");
}

static bool loadShaders() {
    return _KXGL.createProgram && load(_KXGL.getShaderiv, "glGetShaderiv") &&
           load(_KXGL.getShaderInfoLog, "glGetShaderInfoLog") &&
           load(_KXGL.getProgramInfoLog, "glGetProgramInfoLog") && load(_KXGL.uniform1i, "glUniform1i") &&
           load(_KXGL.uniform1fv, "glUniform1fv") && load(_KXGL.uniform2fv, "glUniform2fv") &&
           load(_KXGL.uniform4fv, "glUniform4fv") && load(_KXGL.uniformMatrix4fv, "glUniformMatrix4fv") &&
           load(_KXGL.activeTexture, "glActiveTexture") &&
           load(_KXGL.getUniformLocation, "glGetUniformLocation");
}

static bool loadBuffers() {
    return _KXGL.bindBuffer && load(_KXGL.genBuffers, "glGenBuffers") &&
           load(_KXGL.bufferData, "glBufferData") && load(_KXGL.mapBufferRange, "glMapBufferRange") &&
           load(_KXGL.unmapBuffer, "glUnmapBuffer");
}

void _KXLoadGLFunctions() {
    _KXGL = {};
    if (!loadFramebuffers("") && !loadFramebuffers("EXT"))
        _KXGL.genFramebuffers = nullptr;
    if (!loadBlits())
        _KXGL.blitFramebuffer = nullptr;
    if (!loadPrograms())
        _KXGL.createProgram = nullptr;
    if (!loadShaders())
        _KXGL.getUniformLocation = nullptr;
    load(_KXGL.bindBuffer, "glBindBuffer");
    if (!loadBuffers())
        _KXGL.genBuffers = nullptr;
    if (!load(_KXGL.blendFuncSeparate, "glBlendFuncSeparate") ||
        !load(_KXGL.blendEquation, "glBlendEquation"))
        _KXGL.blendFuncSeparate = nullptr;
    load(_KXGL.clientActiveTexture, "glClientActiveTexture");
}
