#include "render/DepthSurface.h"

#include "core/ground/HeapGlobal.h"
#include "render/GLFunctions.h"
#include "render/KXRenderContext.h"

#include <algorithm>
#include <vector>

namespace {
struct DepthSurface {
    unsigned context;
    unsigned framebuffer;
    unsigned color, depth; // renderbuffers
    int width, height;
};

// Gives the game's framebuffers back, but for the surface that was bound the one that stands for it now.
class BindingsScope {
public:
    BindingsScope() {
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &_draw);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &_read);
        glGetIntegerv(GL_RENDERBUFFER_BINDING, &_renderbuffer);
    }
    ~BindingsScope() {
        _KXGL.bindFramebuffer(GL_DRAW_FRAMEBUFFER, present(_draw));
        _KXGL.bindFramebuffer(GL_READ_FRAMEBUFFER, present(_read));
        _KXGL.bindRenderbuffer(GL_RENDERBUFFER, static_cast<unsigned>(_renderbuffer));
    }
    BindingsScope(const BindingsScope&) = delete;
    BindingsScope& operator=(const BindingsScope&) = delete;

private:
    unsigned present(GLint framebuffer) const {
        const auto previous = static_cast<unsigned>(framebuffer);
        return previous == _surface ? _KXSurfaceFramebuffer() : previous;
    }

    const unsigned _surface = _KXSurfaceFramebuffer();
    GLint _draw = 0, _read = 0, _renderbuffer = 0;
};

// Copies reach only what the scissor box lets through.
class WithoutScissorScope {
public:
    WithoutScissorScope() : _wasOn(glIsEnabled(GL_SCISSOR_TEST)) { glDisable(GL_SCISSOR_TEST); }
    ~WithoutScissorScope() {
        if (_wasOn)
            glEnable(GL_SCISSOR_TEST);
    }
    WithoutScissorScope(const WithoutScissorScope&) = delete;
    WithoutScissorScope& operator=(const WithoutScissorScope&) = delete;

private:
    const GLboolean _wasOn;
};
} // namespace

static constinit _KXHeapGlobal<std::vector<DepthSurface>> surfaces;

static DepthSurface* surfaceOfCurrentContext() {
    if (surfaces.find())
        for (DepthSurface& surface : surfaces.get())
            if (surface.context == _KXCurrentGraphicsContext)
                return &surface;
    return nullptr;
}

unsigned _KXSurfaceFramebuffer() {
    const DepthSurface* const surface = surfaceOfCurrentContext();
    return surface ? surface->framebuffer : 0;
}

static unsigned attachBuffer(GLenum attachment, GLenum format, int width, int height) {
    GLuint buffer = 0;
    _KXGL.genRenderbuffers(1, &buffer);
    _KXGL.bindRenderbuffer(GL_RENDERBUFFER, buffer);
    _KXGL.renderbufferStorage(GL_RENDERBUFFER, format, width, height);
    _KXGL.framebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    return buffer;
}

static void destroy(const DepthSurface& surface) {
    _KXGL.deleteFramebuffers(1, &surface.framebuffer);
    _KXGL.deleteRenderbuffers(1, &surface.color);
    _KXGL.deleteRenderbuffers(1, &surface.depth);
}

// Bound, its contents undefined. @param opaque whether the alpha of what is drawn is not kept.
static DepthSurface makeSurface(int width, int height, bool opaque) {
    DepthSurface surface = {_KXCurrentGraphicsContext, 0, 0, 0, width, height};
    _KXGL.genFramebuffers(1, &surface.framebuffer);
    _KXGL.bindFramebuffer(GL_FRAMEBUFFER, surface.framebuffer);
    surface.color = attachBuffer(GL_COLOR_ATTACHMENT0, opaque ? GL_RGB8 : GL_RGBA8, width, height);
    surface.depth = attachBuffer(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24, width, height);
    return surface;
}

// Empties the surface that is bound.
static void clearSurface() {
    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearColor(0, 0, 0, 0);
    glDepthMask(GL_TRUE);
    glClearDepth(1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPopAttrib();
}

static void copyColors(unsigned from, unsigned to, int width, int height) {
    _KXGL.bindFramebuffer(GL_READ_FRAMEBUFFER, from);
    _KXGL.bindFramebuffer(GL_DRAW_FRAMEBUFFER, to);
    _KXGL.blitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

bool _KXUseDepthSurface(int width, int height) {
    DepthSurface* const present = surfaceOfCurrentContext();
    if (present && present->width == width && present->height == height)
        return true;
    const BindingsScope bindings;
    const WithoutScissorScope everywhere;
    const unsigned previous = _KXSurfaceFramebuffer();
    _KXGL.bindFramebuffer(GL_FRAMEBUFFER, previous);
    GLint alphaBits = 0;
    glGetIntegerv(GL_ALPHA_BITS, &alphaBits);
    const DepthSurface surface = makeSurface(width, height, alphaBits == 0);
    if (_KXGL.checkFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
        glGetError(); // out of memory: told here, not by the next check that finds it
        destroy(surface);
        return false;
    }
    clearSurface();
    if (present) {
        copyColors(previous, surface.framebuffer, std::min(width, present->width),
                   std::min(height, present->height));
        destroy(*present);
        *present = surface;
    } else {
        copyColors(previous, surface.framebuffer, width, height);
        surfaces.get().push_back(surface);
    }
    return true;
}

void _KXCopyDepthSurface() {
    const DepthSurface* const surface = surfaceOfCurrentContext();
    if (!surface)
        return;
    const BindingsScope bindings;
    const WithoutScissorScope everywhere;
    copyColors(surface->framebuffer, 0, surface->width, surface->height);
}

void _KXForgetDepthSurface(unsigned graphicsContext) {
    const auto ended = [graphicsContext](const DepthSurface& surface) {
        return surface.context == graphicsContext;
    };
    if (surfaces.find() && std::erase_if(surfaces.get(), ended) > 0 && surfaces.get().empty())
        surfaces.free();
}
