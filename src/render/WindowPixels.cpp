// Reading a window's pixels back: into a texture, or into a BMP file.

#include "core/ground/Assert.h"
#include "core/ground/Endianness.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "render/DrawBatch.h"
#include "render/Framebuffer.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/KXRenderContext.h"
#include "render/KXTexture.h"
#include "render/KXWindow.h"
#include "render/PixelStore.h"

#include <SDL.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <cstring>
#include <memory>
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
    const _KXDefaultFramebufferScope window;
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

KXTexture* KXWindow::copyTexture() {
    KX_GL_CHECK("KXWindow::copyTexture");
    const _KXGraphicsContextScope scope(_graphicsContext);
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    std::vector<char> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    _readPixels(pixels.data(), GL_RGBA);
    _flipPixels(pixels.data(), GL_RGBA);
    auto texture = std::make_unique<KXTexture>();
    if (!texture->_loadFromData(width, height, 4, GL_RGBA, pixels.data()))
        return nullptr;
    const KXSize points = size();
    const bool natural =
        points.width == static_cast<float>(width) && points.height == static_cast<float>(height);
    return natural ? texture.release() : _scaledToPoints(*texture);
}

KXTexture* KXWindow::_scaledToPoints(KXTexture& texture) {
    const KXSize points = size();
    auto scaled = std::make_unique<KXTexture>();
    if (!scaled->_loadFromData(_KXTruncate(points.width), _KXTruncate(points.height), 4, GL_RGBA, nullptr))
        return nullptr;
    // The game may be in the middle of a frame: its target, matrices, clip and blending come back afterwards.
    KXRenderContext* const target = _KXCurrentRenderContext;
    GLint framebuffer = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &framebuffer);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    scaled->setRenderContext();
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    texture.draw(0, 0, 1.0f, points.width / texture.size().width, 0, 0, -1);
    scaled->unsetRenderContext();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopAttrib();
    _KXBindFramebuffer(static_cast<unsigned>(framebuffer));
    _KXCurrentRenderContext = target;
    return scaled.release();
}

int KXWindow::saveBuffer(const char* path, int powerOfTwo) {
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    if (width < 1 || height < 1 || !path) {
        _KXReportError("Unable to save bitmap image (%s): %s", path ? path : "",
                       path ? "the window is closed" : "no path");
        return 0;
    }
    const std::size_t drawnRow = static_cast<std::size_t>(width) * 4;
    std::vector<char> pixels(drawnRow * static_cast<std::size_t>(height));
    _readPixels(pixels.data(), GL_RGBA);
    _flipPixels(pixels.data(), GL_RGBA);

    int imageWidth = width, imageHeight = height;
    if (powerOfTwo) {
        imageWidth = KXNearestPowerOfTwo(width);
        imageHeight = KXNearestPowerOfTwo(height);
    }
    const bool littleEndian = _KXEndianness != 0;
    SDL_Surface* surface =
        SDL_CreateRGBSurface(0, imageWidth, imageHeight, 32, littleEndian ? 0x000000FF : 0xFF000000,
                             littleEndian ? 0x0000FF00 : 0x00FF0000, littleEndian ? 0x00FF0000 : 0x0000FF00,
                             littleEndian ? 0xFF000000 : 0x000000FF);
    if (!surface) {
        _KXReportError("Unable to create SDL surface: %s", SDL_GetError());
        return 0;
    }
    // Each image row begins one drawn row behind the one before, so where the image is wider than the window
    // its rows overlap. The platform refuses rows that overlap, so they are written out one by one.
    pixels.resize(static_cast<std::size_t>(imageWidth) * static_cast<std::size_t>(imageHeight) * 4);
    for (int y = 0; y < imageHeight; ++y)
        std::memcpy(static_cast<char*>(surface->pixels) + static_cast<std::ptrdiff_t>(y) * surface->pitch,
                    pixels.data() + static_cast<std::size_t>(y) * drawnRow,
                    static_cast<std::size_t>(imageWidth) * 4);
    const int result = SDL_SaveBMP(surface, path);
    SDL_FreeSurface(surface);
    if (result == 0)
        return -1;
    _KXReportError("Unable to save bitmap image (%s): %s", path, SDL_GetError());
    return 0;
}
