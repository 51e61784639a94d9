#include "render/KXWindow.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "core/ground/Truncate.h"
#include "input/StepInput.h"
#include "platform/VerticalSync.h"
#include "render/DepthSurface.h"
#include "render/DrawBatch.h"
#include "render/Framebuffer.h"
#include "render/GLCheck.h"
#include "render/GLFunctions.h"
#include "render/GlyphStore.h"
#include "render/GraphicsContext.h"
#include "render/KXRenderContext.h"
#include "render/Pen.h"
#include "render/PictureFit.h"
#include "render/View.h"

#include <GL/glu.h>
#include <SDL.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <new>

constinit std::map<unsigned, KXWindow*>* _windowsMap = nullptr;

KXWindow* _KXWindowWithID(unsigned id) {
    if (!_windowsMap)
        return nullptr;
    const auto found = _windowsMap->find(id);
    return found == _windowsMap->end() ? nullptr : found->second;
}

void _KXCloseAllWindows() {
    _KXLastWindowID = 0; // the platform begins anew
    while (_windowsMap)
        _windowsMap->begin()->second->_closePlatformWindow();
}

KXWindow::KXWindow(const char* title, KXSize size, int resizable) { _commonInit(title, size, resizable); }

KXWindow::KXWindow(const char* title, KXSize size) : KXWindow(title, size, 0) {}

KXWindow::~KXWindow() { _closePlatformWindow(); }

// Null where the platform refuses.
static SDL_Window* openPlatformWindow(const char* title, KXSize size, int resizable) {
    // The platform would start itself, and would make a window of any size, if it were asked. Of what is less
    // than a point it makes a point.
    if (!SDL_WasInit(SDL_INIT_VIDEO) || !(size.width > 0) || !(size.height > 0))
        return nullptr;
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_ALLOW_HIGHDPI;
    if (resizable)
        flags |= SDL_WINDOW_RESIZABLE;
    const int width = _KXTruncate(size.width), height = _KXTruncate(size.height);
    // A replay lets windows grow that could not.
    const KXSize largest = _KXIsReplaying() ? _KXRunningTape->largestWindow() : size;
    SDL_Window* const window = SDL_CreateWindow(
        title ? title : "", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
        std::max(width, _KXTruncate(largest.width)), std::max(height, _KXTruncate(largest.height)), flags);
    if (_KXIsReplaying())
        SDL_SetWindowSize(window, width, height);
    return window;
}

namespace {
struct PlatformWindow {
    SDL_Window* window;
    void* context;
};
} // namespace

static PlatformWindow openWithContext(const char* title, KXSize size, int resizable, int depthBits) {
    constexpr int usualDepthBits = 16; // what the platform asks for by itself
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, depthBits);
    SDL_Window* const window = openPlatformWindow(title, size, resizable);
    void* const context = window ? SDL_GL_CreateContext(window) : nullptr;
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, usualDepthBits);
    if (context)
        _KXLoadGLFunctions();
    return {window, context};
}

// Without a depth buffer, if the driver can give the window one once it is wanted.
static PlatformWindow openWithContext(const char* title, KXSize size, int resizable) {
    const PlatformWindow opened = openWithContext(title, size, resizable, 0);
    if (!opened.context || _KXGL.blitFramebuffer)
        return opened;
    SDL_GL_DeleteContext(opened.context);
    SDL_DestroyWindow(opened.window);
    return openWithContext(title, size, resizable, 24);
}

void KXWindow::_commonInit(const char* title, KXSize size, int resizable) {
    KX_GL_CHECK("KXWindow::KXWindow");
    const unsigned previous = _KXCurrentGraphicsContext;
    _KXFlushBatch(KXDrawFlushTarget);
    const PlatformWindow opened = openWithContext(title, size, resizable);
    _window = opened.window;
    _context = opened.context;
    if (!_context) {
        _KXReportError("Couldn't set %dx%d video mode:", _KXTruncate(size.width), _KXTruncate(size.height));
        SDL_DestroyWindow(_window);
        _KXMakeGraphicsContextCurrent(previous);
        throw std::bad_alloc();
    }

    try {
        _register();
    } catch (const std::bad_alloc&) {
        _closePlatformWindow();
        _KXMakeGraphicsContextCurrent(previous);
        throw;
    }
    _prepareContext(size);
    _rememberDensity(_densityNow());
    if (previous)
        _KXMakeGraphicsContextCurrent(previous);
}

void KXWindow::_register() {
    _id = _KXLastWindowID = SDL_GetWindowID(_window);
    if (!_windowsMap)
        _windowsMap = new std::map<unsigned, KXWindow*>;
    (*_windowsMap)[_id] = this;
    _graphicsContext = _KXAddGraphicsContext(_window, _context, this);
    _KXCurrentGraphicsContext = _graphicsContext; // creating a context has made it current
}

int KXWindow::setVerticalSync(KXVerticalSync sync) {
    const _KXGraphicsContextScope scope(_graphicsContext);
    const bool set = _window && scope && _KXSetVerticalSync(sync);
    if (_KXAnswerTo(_KXQuestion::Display, [set] { return set; }))
        return -1;
    _KXReportError("Vertical sync cannot be set: %s", SDL_GetError());
    return 0;
}

KXVerticalSync KXWindow::verticalSync() {
    const _KXGraphicsContextScope scope(_graphicsContext);
    const int sync = _window && scope ? _KXVerticalSync() : 0;
    return static_cast<KXVerticalSync>(_KXAnswerTo(_KXQuestion::Display, [sync] { return sync; }));
}

void KXWindow::_prepareContext(KXSize size) {
    _KXSetVerticalSync(KXVerticalSyncOn);
    glGetIntegerv(GL_DEPTH_BITS, &_depthBits);
    glViewport(0, 0, _KXTruncate(size.width), _KXTruncate(size.height));
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    _renderingMode = KXWindowRenderingMode2D;
    _applyProjection();
    _sizeCache = KXZeroSize;
}

void KXWindow::_closePlatformWindow() {
    if (!_window)
        return;
    // A texture of this window that is drawn into stops being a target: its framebuffer ends with the
    // context.
    if (_graphicsContext && _KXCurrentRenderContext && _KXCurrentGraphicsContext == _graphicsContext) {
        _KXCurrentRenderContext->unsetRenderContext();
        _KXSetTarget(nullptr, false);
    }
    _KXReleaseWindow(_id);
    _KXRemoveGraphicsContext(_graphicsContext);
    SDL_GL_DeleteContext(_context);
    SDL_DestroyWindow(_window);
    _window = nullptr;
    _context = nullptr;
    _graphicsContext = 0;
    if (!_windowsMap)
        return; // there was no memory for it
    _windowsMap->erase(_id);
    if (_windowsMap->empty()) {
        delete _windowsMap;
        _windowsMap = nullptr;
    }
}

void KXWindow::setRenderingMode(KXWindowRenderingMode mode) {
    KX_GL_CHECK("KXWindow::setRenderingMode");
    _KXFlushBatch(KXDrawFlushProjection);
    _renderingMode = mode;
    const bool drawsIntoTexture = _KXCurrentRenderContext && _KXCurrentRenderContext != this &&
                                  _KXCurrentGraphicsContext == _graphicsContext;
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (scope && !drawsIntoTexture)
        _applyProjection();
}

// A surface that has been given depth keeps it, and follows the size of the window.
void KXWindow::_fitDepthSurface() {
    if (_depthBits > 0 || (_renderingMode == KXWindowRenderingMode2D && !_KXSurfaceFramebuffer()))
        return;
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    if (!_KXUseDepthSurface(std::max(1, width), std::max(1, height)))
        _KXReportError("Unable to make a depth buffer of %d x %d pixels", width, height);
}

void KXWindow::_applyProjection() {
    _fitDepthSurface();
    const KXSize units = logicalSize();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (_renderingMode == KXWindowRenderingMode2D) {
        glOrtho(0, units.width, units.height, 0, -1, 1);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_CULL_FACE);
    } else {
        gluPerspective(45, units.height > 0 ? units.width / units.height : 1, 1, 1000);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
        glCullFace(GL_BACK);
    }
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

KXSize KXWindow::size() {
    if (_sizeCache.width == 0 && _sizeCache.height == 0)
        _sizeCache = rect().size;
    return _sizeCache;
}

KXRect KXWindow::rect() {
    int width = 0, height = 0;
    SDL_GetWindowSize(_window, &width, &height);
    const int goByWidth = _KXAnswerTo(_KXQuestion::Width, [width] { return width; });
    const int goByHeight = _KXAnswerTo(_KXQuestion::Height, [height] { return height; });
    if (goByWidth != width || goByHeight != height) // whoever had resized it is not here
        SDL_SetWindowSize(_window, goByWidth, goByHeight);
    return {getPosition(), {static_cast<float>(goByWidth), static_cast<float>(goByHeight)}};
}

void KXWindow::_invalidateSizeCache() { _sizeCache = KXZeroSize; }

bool KXWindow::_hasKnownSize() const {
    int width = 0, height = 0;
    SDL_GetWindowSize(_window, &width, &height);
    return _KXTruncate(_sizeCache.width) == width && _KXTruncate(_sizeCache.height) == height;
}

void KXWindow::setSize(KXSize size) {
    _invalidateSizeCache();
    SDL_SetWindowSize(_window, _KXTruncate(size.width), _KXTruncate(size.height));
}

void KXWindow::swapBuffers() {
    _KXFlushBatch(KXDrawFlushSwap);
    _KXEndDrawStatistics();
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope)
        return;
    if (_KXBeforeSwap)
        _KXBeforeSwap(*this);
    _KXCopyDepthSurface();
    SDL_GL_SwapWindow(_window);
    _KXEndGlyphFrame();
}

void KXWindow::_drawableSize(int* width, int* height) {
    *width = *height = 0;
    if (_window)
        SDL_GL_GetDrawableSize(_window, width, height);
}

void KXWindow::setSharpText(int sharp) {
    _hasSharpText = sharp != 0;
    if (_KXCurrentRenderContext == this)
        _KXTargetHasSharpText = _hasSharpText;
}

void KXWindow::setRenderContext() {
    KX_GL_CHECK("KXWindow::setRenderContext");
    _KXFlushBatch(KXDrawFlushTarget);
    if (!_KXMakeGraphicsContextCurrent(_graphicsContext)) {
        _KXReportError("Unable to draw into a closed window");
        return;
    }
    size(); // a replay gives the window its size when it is asked for
    const _KXPixelBox picture = _pictureInPixels();
    glViewport(picture.left, picture.bottom, picture.width, picture.height);
    const float units = logicalSize().width;
    _KXPixelsPerUnit = units > 0 && picture.width > 0 ? static_cast<float>(picture.width) / units : 1;
    _KXTargetHasSharpText = _hasSharpText;
    _applyProjection(); // may give the surface depth
    _KXBindSurface();
    _drawBars();
    _KXSetTarget(this, false);
    _KXCurrentWindowRenderContext = this;
}
