#pragma once

#include <SDL_opengl.h>

/// The functions of OpenGL that not every driver has, null where it has not. The first of a group tells
/// whether all of the group are there.
struct _KXGLFunctions {
    PFNGLGENFRAMEBUFFERSPROC genFramebuffers;
    PFNGLDELETEFRAMEBUFFERSPROC deleteFramebuffers;
    PFNGLBINDFRAMEBUFFERPROC bindFramebuffer;
    PFNGLFRAMEBUFFERTEXTURE2DPROC framebufferTexture2D;
    PFNGLCHECKFRAMEBUFFERSTATUSPROC checkFramebufferStatus;

    PFNGLBLITFRAMEBUFFERPROC blitFramebuffer;
    PFNGLGENRENDERBUFFERSPROC genRenderbuffers;
    PFNGLDELETERENDERBUFFERSPROC deleteRenderbuffers;
    PFNGLBINDRENDERBUFFERPROC bindRenderbuffer;
    PFNGLRENDERBUFFERSTORAGEPROC renderbufferStorage;
    PFNGLFRAMEBUFFERRENDERBUFFERPROC framebufferRenderbuffer;

    PFNGLCREATEPROGRAMPROC createProgram;
    PFNGLCREATESHADERPROC createShader;
    PFNGLSHADERSOURCEPROC shaderSource;
    PFNGLCOMPILESHADERPROC compileShader;
    PFNGLDELETESHADERPROC deleteShader;
    PFNGLATTACHSHADERPROC attachShader;
    PFNGLLINKPROGRAMPROC linkProgram;
    PFNGLGETPROGRAMIVPROC getProgramiv;
    PFNGLUSEPROGRAMPROC useProgram;
    PFNGLDELETEPROGRAMPROC deleteProgram;

    PFNGLGETUNIFORMLOCATIONPROC getUniformLocation; // of those a game's own programs need
    PFNGLGETSHADERIVPROC getShaderiv;
    PFNGLGETSHADERINFOLOGPROC getShaderInfoLog;
    PFNGLGETPROGRAMINFOLOGPROC getProgramInfoLog;
    PFNGLUNIFORM1IPROC uniform1i;
    PFNGLUNIFORM1FVPROC uniform1fv;
    PFNGLUNIFORM2FVPROC uniform2fv;
    PFNGLUNIFORM4FVPROC uniform4fv;
    PFNGLUNIFORMMATRIX4FVPROC uniformMatrix4fv;
    PFNGLACTIVETEXTUREPROC activeTexture;

    PFNGLBINDBUFFERPROC bindBuffer;
    PFNGLGENBUFFERSPROC genBuffers; // of those a batch is streamed with
    PFNGLBUFFERDATAPROC bufferData;
    PFNGLMAPBUFFERRANGEPROC mapBufferRange;
    PFNGLUNMAPBUFFERPROC unmapBuffer;

    PFNGLBLENDFUNCSEPARATEPROC blendFuncSeparate;
    PFNGLBLENDEQUATIONPROC blendEquation;

    PFNGLCLIENTACTIVETEXTUREARBPROC clientActiveTexture;
};

/// What the driver of the context that was made last has.
inline constinit _KXGLFunctions _KXGL = {};

/// Loads the functions from the context that is current.
void _KXLoadGLFunctions();
