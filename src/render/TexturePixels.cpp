// What a texture holds: images and data going in, pixels coming back out.

#include "render/KXTexture.h"

#include "core/ground/Endianness.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "image/ImageFile.h"
#include "render/DrawBatch.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/KXRenderContext.h"
#include "render/PixelStore.h"
#include "render/TextureBinding.h"

#include <SDL_image.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

constinit int _KXTextureMode = GL_NEAREST;

void KXSetTextureMode(int mode) { _KXTextureMode = mode == 1 ? GL_NEAREST : GL_LINEAR; }

namespace {
// Whether the driver can hold such a texture; it is asked without leaving an OpenGL error behind.
bool driverAccepts(int width, int height, int internalFormat, unsigned format) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (width < 1 || height < 1 || width > largest || height > largest)
        return false;
    glTexImage2D(GL_PROXY_TEXTURE_2D, 0, internalFormat, width, height, 0, format, GL_UNSIGNED_BYTE, nullptr);
    GLint accepted = 0;
    glGetTexLevelParameteriv(GL_PROXY_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &accepted);
    return accepted == width;
}

// Uploads into a new texture, which stays bound. 0 if the driver cannot hold it.
unsigned upload(int width, int height, int internalFormat, unsigned format, const char* data) {
    if (!driverAccepts(width, height, internalFormat, format))
        return 0;
    const _KXTightPixelStore tight;
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, format, GL_UNSIGNED_BYTE, data);
    return _KXHeldTexture(texture, width);
}

// The surface's pixels, moved together where its rows end with padding.
const char* tightPixels(SDL_Surface& surface) {
    const std::ptrdiff_t row = std::ptrdiff_t{surface.w} * surface.format->BytesPerPixel;
    char* const pixels = static_cast<char*>(surface.pixels);
    for (int y = 1; y < surface.h && surface.pitch != row; ++y)
        std::memmove(pixels + y * row, pixels + std::ptrdiff_t{y} * surface.pitch,
                     static_cast<std::size_t>(row));
    return pixels;
}
} // namespace

int KXTexture::_loadImage(const char* path) {
    KX_GL_CHECK("KXTexture::_loadImage");
    if (!path)
        return 0;
    const auto [surface, isTooLarge] = _KXDecodeImageFile(path);
    if (isTooLarge)
        _KXReportError("%s: more than %u pixels", path, _KXMaximumImagePixels());
    if (!surface)
        return 0;
    const int components = surface->format->BytesPerPixel;
    if (components != 3 && components != 4) {
        _KXReportError("%s: not a truecolor image", path);
        return 0;
    }
    const Uint32 redFirst = _KXEndianness ? 0x000000FF : 0xFF000000;
    const bool reversed = surface->format->Rmask != redFirst;
    const unsigned format = components == 3 ? (reversed ? GL_BGR : GL_RGB) : (reversed ? GL_BGRA : GL_RGBA);
    return _loadFromData(surface->w, surface->h, components, format, tightPixels(*surface));
}

// What is there stays if the file cannot be loaded, and what the game draws into it right now.
void KXTexture::_reload(const char* path) {
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || _KXCurrentRenderContext == this)
        return;
    if (!_loadImage(path))
        _KXReportError("%s: no picture that a texture can be made of", path);
}

int KXTexture::_loadFromData(int width, int height, int internalFormat, unsigned format, const char* data) {
    KX_GL_CHECK("KXTexture::_loadFromData");
    if (!_KXCurrentGraphicsContext) {
        _KXReportError("Unable to create a texture of %d x %d pixels: no window is current", width, height);
        return 0;
    }
    _KXFlushBatch(KXDrawFlushTextureChange);
    ++_KXDrawStatistics.textureUploads;
    const unsigned texture = upload(width, height, internalFormat, format, data);
    if (!texture) {
        _KXReportError("Unable to create a texture of %d x %d pixels", width, height);
        return 0;
    }
    if (_KXCurrentRenderContext == this)
        unsetRenderContext();
    _clearTextureID();
    _forgetPixels();
    _textureID = texture;
    _graphicsContext = _KXCurrentGraphicsContext;
    _internalFormat = internalFormat;
    _format = format;
    _size = {static_cast<float>(width), static_cast<float>(height)};
    if (!_hasOwnFilter)
        _filter = _KXTextureMode == GL_NEAREST ? KXFilterNearest : KXFilterLinear;
    _applySampling();
    return -1;
}

void KXTexture::clear() {
    KX_GL_CHECK("KXTexture::clear");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID)
        return;
    _KXFlushBatch(KXDrawFlushTextureChange);
    ++_KXDrawStatistics.textureUploads;
    _forgetPixels();
    const int width = static_cast<int>(_size.width), height = static_cast<int>(_size.height);
    const _KXTextureBindingScope binding(_textureID);
    const _KXTightPixelStore tight;
    constexpr int rowsAtATime = 64;
    const std::vector<char> empty(static_cast<std::size_t>(width) * 4 * rowsAtATime);
    for (int y = 0; y < height; y += rowsAtATime)
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, y, width, std::min(rowsAtATime, height - y), GL_RGBA,
                        GL_UNSIGNED_BYTE, empty.data());
}

void KXTexture::_forgetPixels() { _pixelCache.reset(); }

// The whole texture as RGBA. Tightly packed, so pixels must have room for width times height times four
// values.
void KXTexture::_readBack(unsigned type, void* pixels) {
    _KXFlushBatch(KXDrawFlushRead);
    const _KXTextureBindingScope binding(_textureID);
    const _KXTightPixelStore tight;
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, type, pixels);
}

void KXTexture::_getPixel(int x, int y, float& r, float& g, float& b, float& a, int keepCache) {
    KX_GL_CHECK("KXTexture::_getPixel");
    r = g = b = a = -1;
    const _KXGraphicsContextScope scope(_graphicsContext);
    const auto fx = static_cast<float>(x), fy = static_cast<float>(y);
    if (!scope || !_textureID || !(fx >= 0 && fx <= _size.width - 1) || !(fy >= 0 && fy <= _size.height - 1))
        return;
    const auto width = static_cast<std::size_t>(_size.width), height = static_cast<std::size_t>(_size.height);
    const bool cached = _pixelCache != nullptr;
    if (!cached) {
        _pixelCache.reset(new (std::nothrow) float[width * 4 * height]);
        if (!_pixelCache)
            return;
        _readBack(GL_FLOAT, _pixelCache.get());
    }
    const float* const pixel =
        &_pixelCache[(width * static_cast<std::size_t>(y) + static_cast<std::size_t>(x)) * 4];
    r = pixel[0];
    g = pixel[1];
    b = pixel[2];
    a = pixel[3];
    // What is drawn into a target from here on would not show in pixels that were kept.
    if ((!keepCache && !cached) || _KXCurrentRenderContext == this)
        _forgetPixels();
}

KXColor KXTexture::getPixel(KXPoint point, int keepCache) {
    KXColor color;
    _getPixel(_KXTruncate(point.x), _KXTruncate(point.y), color.r, color.g, color.b, color.a, keepCache);
    return color;
}

unsigned char* KXTexture::copyPixels() {
    KX_GL_CHECK("KXTexture::copyPixels");
    const _KXGraphicsContextScope scope(_graphicsContext);
    const auto bytes = static_cast<std::size_t>(_size.width) * static_cast<std::size_t>(_size.height) * 4;
    void* const pixels = scope && _textureID ? std::malloc(bytes) : nullptr;
    if (pixels)
        _readBack(GL_UNSIGNED_BYTE, pixels);
    else
        _KXReportError("Unable to copy the pixels of a texture that is empty or whose window is closed");
    return static_cast<unsigned char*>(pixels);
}

int KXTexture::writeToPNG(const char* path) { return _savePNG(path); }

SDL_Surface* KXTexture::_newSurface() {
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID) {
        SDL_SetError("the texture is empty or its window is closed");
        return nullptr;
    }
    SDL_Surface* const surface = SDL_CreateRGBSurfaceWithFormat(
        0, static_cast<int>(_size.width), static_cast<int>(_size.height), 32, SDL_PIXELFORMAT_RGBA32);
    if (surface)
        _readBack(GL_UNSIGNED_BYTE, surface->pixels);
    return surface;
}

int KXTexture::_savePNG(const char* path) {
    KX_GL_CHECK("KXTexture::writeToPNG");
    if (!path) {
        _KXReportError("Unable to write a PNG file: no path");
        return 0;
    }
    const _KXSurface surface(_newSurface());
    std::string reason;
    if (!surface)
        reason = SDL_GetError();
    else if (_KXStoreImage(path, *surface, IMG_SavePNG_RW, reason))
        return -1;
    _KXReportError("Unable to write a PNG file (%s): %s", path, reason.c_str());
    return 0;
}
