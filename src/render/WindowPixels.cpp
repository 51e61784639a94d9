// Reading a window's pixels back: into a texture, or into a BMP file.

#include "core/ground/Assert.h"
#include "core/ground/Endianness.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "image/ImageFile.h"
#include "image/Surface.h"
#include "render/CameraMap.h"
#include "render/DrawBatch.h"
#include "render/Framebuffer.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/KXRenderContext.h"
#include "render/KXTexture.h"
#include "render/KXWindow.h"
#include "render/Pen.h"
#include "render/PixelStore.h"

#include <SDL.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

static int bytesPerPixel(unsigned format) { return format == GL_RGBA ? 4 : 3; }

void KXWindow::_readPixels(char* buffer, unsigned format) {
    KX_GL_CHECK("KXWindow::_readPixels");
    _KXFlushBatch(KXDrawFlushRead);
    _KXAssert(format == GL_RGBA || format == GL_RGB, "KXWindow");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope)
        return;
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    const _KXSurfaceScope surface;
    const _KXTightPixelStore tight;
    glReadPixels(0, 0, width, height, format, GL_UNSIGNED_BYTE, buffer);
}

void KXWindow::_flipPixels(char* buffer, unsigned format) {
    _KXAssert(format == GL_RGBA || format == GL_RGB, "KXWindow");
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(width) * bytesPerPixel(format);
    for (int y = 0; y < height / 2; ++y)
        std::swap_ranges(buffer + y * row, buffer + (y + 1) * row, buffer + (height - 1 - y) * row);
}

int _KXWindowTextureLoadFromData(KXTexture* texture, KXSize size, int internalFormat, unsigned format,
                                 const char* data) {
    return texture->_loadFromData(_KXTruncate(size.width), _KXTruncate(size.height), internalFormat, format,
                                  data);
}

std::uint64_t _KXHashOfPixels(KXWindow& window) {
    int size[2] = {0, 0};
    window._drawableSize(&size[0], &size[1]);
    std::vector<char> pixels(static_cast<std::size_t>(size[0]) * static_cast<std::size_t>(size[1]) * 4 +
                             sizeof size);
    window._readPixels(pixels.data(), GL_RGBA);
    std::memcpy(pixels.data() + pixels.size() - sizeof size, size, sizeof size);
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (std::size_t i = 0; i + 8 <= pixels.size(); i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, &pixels[i], 8);
        hash = (hash ^ word) * 0x100000001B3U;
        hash ^= hash >> 29;
    }
    return hash;
}

std::string _KXRendererName() {
    const auto* const name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    return name ? name : "";
}

// Every pixel as RGBA, the first row at the top. Nothing if the window is closed.
static std::vector<char> drawnPixels(KXWindow& window) {
    int width = 0, height = 0;
    window._drawableSize(&width, &height);
    std::vector<char> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    window._readPixels(pixels.data(), GL_RGBA);
    window._flipPixels(pixels.data(), GL_RGBA);
    return pixels;
}

namespace {
// The game may be in the middle of a frame: its target, matrices, clip and blending come back afterwards.
class FrameStateScope {
public:
    FrameStateScope() {
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &_framebuffer);
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
    }
    ~FrameStateScope() {
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glPopAttrib();
        _KXBindFramebuffer(static_cast<unsigned>(_framebuffer));
        _KXCurrentRenderContext = _target;
    }
    FrameStateScope(const FrameStateScope&) = delete;
    FrameStateScope& operator=(const FrameStateScope&) = delete;

private:
    const _KXPenScope _pen;
    const _KXNoCameraScope _noCamera;
    KXRenderContext* const _target = _KXCurrentRenderContext;
    GLint _framebuffer = 0;
};
} // namespace

// Null if the texture of that size cannot be made.
static KXTexture* scaled(KXTexture& texture, KXSize size) {
    auto result = std::make_unique<KXTexture>();
    if (!_KXWindowTextureLoadFromData(result.get(), size, 4, GL_RGBA, nullptr))
        return nullptr;
    const FrameStateScope frame;
    result->setRenderContext();
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    texture.draw(0, 0, 1.0f, size.width / texture.size().width, 0, 0, -1);
    result->unsetRenderContext();
    return result.release();
}

KXTexture* KXWindow::copyTexture() {
    KX_GL_CHECK("KXWindow::copyTexture");
    const _KXGraphicsContextScope scope(_graphicsContext);
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    auto texture = std::make_unique<KXTexture>();
    if (!texture->_loadFromData(width, height, 4, GL_RGBA, drawnPixels(*this).data()))
        return nullptr;
    const KXSize points = size();
    const bool natural =
        points.width == static_cast<float>(width) && points.height == static_cast<float>(height);
    return natural ? texture.release() : scaled(*texture, points);
}

// An image each of whose rows begins one drawn row behind the one before: where it is wider than what was
// drawn, its rows overlap. The platform refuses a surface over overlapping rows, so they are copied. Null if
// it cannot be made.
static _KXSurface imageOf(std::vector<char> pixels, int drawnWidth, int width, int height) {
    const bool littleEndian = _KXEndianness != 0;
    _KXSurface surface(SDL_CreateRGBSurface(
        0, width, height, 32, littleEndian ? 0x000000FF : 0xFF000000, littleEndian ? 0x0000FF00 : 0x00FF0000,
        littleEndian ? 0x00FF0000 : 0x0000FF00, littleEndian ? 0xFF000000 : 0x000000FF));
    if (!surface)
        return nullptr;
    const std::size_t row = static_cast<std::size_t>(width) * 4;
    pixels.resize(row * static_cast<std::size_t>(height));
    for (std::ptrdiff_t y = 0; y < height; ++y)
        std::memcpy(static_cast<char*>(surface->pixels) + y * surface->pitch,
                    pixels.data() + y * drawnWidth * 4, row);
    return surface;
}

unsigned char* KXWindow::copyPixels(int* width, int* height) {
    int size[2] = {0, 0};
    _drawableSize(&size[0], &size[1]);
    const std::size_t bytes = static_cast<std::size_t>(size[0]) * static_cast<std::size_t>(size[1]) * 4;
    auto* const pixels = static_cast<char*>(bytes ? std::malloc(bytes) : nullptr);
    if (width)
        *width = pixels ? size[0] : 0;
    if (height)
        *height = pixels ? size[1] : 0;
    if (!pixels) {
        _KXReportError("Unable to copy the pixels of a closed window");
        return nullptr;
    }
    _readPixels(pixels, GL_RGBA);
    _flipPixels(pixels, GL_RGBA);
    return reinterpret_cast<unsigned char*>(pixels);
}

KXImage KXWindow::copyImage() {
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    if (width < 1 || height < 1) {
        _KXReportError("Unable to copy the pixels of a closed window");
        return {};
    }
    KXImage image(width, height);
    if (!image.row(0))
        return image;
    _readPixels(reinterpret_cast<char*>(image.row(0)), GL_RGBA);
    _flipPixels(reinterpret_cast<char*>(image.row(0)), GL_RGBA);
    for (int y = 0; y < height; ++y) // what alpha a window holds is the platform's choice
        for (int x = 0; x < width; ++x)
            image.row(y)[x].a = 255;
    return image;
}

int KXWindow::saveBuffer(const char* path, int powerOfTwo) {
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    if (width < 1 || height < 1 || !path) {
        _KXReportError("Unable to save bitmap image (%s): %s", path ? path : "",
                       path ? "the window is closed" : "no path");
        return 0;
    }
    const auto side = [powerOfTwo](int drawn) { return powerOfTwo ? KXNearestPowerOfTwo(drawn) : drawn; };
    const _KXSurface image = imageOf(drawnPixels(*this), width, side(width), side(height));
    if (!image) {
        _KXReportError("Unable to create SDL surface: %s", SDL_GetError());
        return 0;
    }
    std::string reason;
    if (_KXStoreImage(path, *image, SDL_SaveBMP_RW, reason))
        return -1;
    _KXReportError("Unable to save bitmap image (%s): %s", path, reason.c_str());
    return 0;
}
