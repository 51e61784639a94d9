#include "render/KXTexture.h"

#include "core/Endianness.h"
#include "core/ErrorSlot.h"
#include "core/Truncate.h"
#include "render/Framebuffer.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/PixelStore.h"
#include "render/QuadStream.h"
#include "render/RenderContext.h"

#include <SDL_image.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

constinit int _KXTextureMode = GL_NEAREST;

void KXSetTextureMode(int mode) { _KXTextureMode = mode == 1 ? GL_NEAREST : GL_LINEAR; }

namespace {
// Binds a texture for a read or write that is no draw, and gives the game's own binding back.
class BindingScope {
public:
    explicit BindingScope(unsigned texture) {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_previous);
        glBindTexture(GL_TEXTURE_2D, texture);
    }
    ~BindingScope() { glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(_previous)); }
    BindingScope(const BindingScope&) = delete;
    BindingScope& operator=(const BindingScope&) = delete;

private:
    GLint _previous = 0;
};

struct FreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Surface = std::unique_ptr<SDL_Surface, FreeSurface>;

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
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, _KXTextureMode);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, _KXTextureMode);
    glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, format, GL_UNSIGNED_BYTE, data);
    GLint held = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &held);
    if (held == width)
        return texture;
    glGetError(); // out of memory: told here, not by the next check that finds it
    glDeleteTextures(1, &texture);
    return 0;
}

// The surface's pixels without the padding that its rows may end with.
std::vector<char> tightPixels(const SDL_Surface& surface) {
    const std::size_t row = static_cast<std::size_t>(surface.w) * surface.format->BytesPerPixel;
    std::vector<char> pixels(row * static_cast<std::size_t>(surface.h));
    const char* source = static_cast<const char*>(surface.pixels);
    for (int y = 0; y < surface.h; ++y)
        std::memcpy(pixels.data() + static_cast<std::size_t>(y) * row,
                    source + static_cast<std::ptrdiff_t>(y) * surface.pitch, row);
    return pixels;
}

int limited(int value, int low, int high) { return std::max(low, std::min(value, high)); }
} // namespace

KXTexture::KXTexture() { _commonInit(); }

KXTexture::KXTexture(const char* path) {
    _commonInit();
    if (!_loadImage(path))
        throw std::bad_alloc();
}

KXTexture::KXTexture(int width, int height) {
    _commonInit();
    if (!_loadFromData(width, height, 4, GL_RGBA, nullptr))
        throw std::bad_alloc();
}

KXTexture::~KXTexture() {
    if (_KXCurrentRenderContext == this)
        unsetRenderContext();
    _clearFBOID();
    _clearTextureID();
    _forgetPixels();
}

void KXTexture::_commonInit() {
    _textureID = 0;
    _framebufferID = 0;
    _size = KXZeroSize;
    _tint = {1, 1, 1, 1};
    _internalFormat = 0;
    _format = 0;
    _pixelCache = nullptr;
    _graphicsContext = 0;
}

void KXTexture::_clearTextureID() {
    if (_textureID) {
        const _KXGraphicsContextScope scope(_graphicsContext);
        if (scope)
            glDeleteTextures(1, &_textureID);
    }
    _textureID = 0;
}

void KXTexture::_clearFBOID() {
    if (_framebufferID) {
        const _KXGraphicsContextScope scope(_graphicsContext);
        if (scope)
            _KXDeleteFramebuffer(_framebufferID);
    }
    _framebufferID = 0;
}

void KXTexture::_forgetPixels() {
    std::free(_pixelCache);
    _pixelCache = nullptr;
}

bool KXTexture::_isUsableHere() const { return _textureID && _graphicsContext == _KXCurrentGraphicsContext; }

int KXTexture::_loadImage(const char* path) {
    KX_GL_CHECK("KXTexture::_loadImage");
    if (!path)
        return 0;
    const Surface surface(IMG_Load(path));
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
    return _loadFromData(surface->w, surface->h, components, format, tightPixels(*surface).data());
}

int KXTexture::_loadFromData(int width, int height, int internalFormat, unsigned format, const char* data) {
    KX_GL_CHECK("KXTexture::_loadFromData");
    if (!_KXCurrentGraphicsContext) {
        _KXReportError("Unable to create a texture of %d x %d pixels: no window is current", width, height);
        return 0;
    }
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
    return -1;
}

void KXTexture::bind() {
    if (_isUsableHere())
        glBindTexture(GL_TEXTURE_2D, _textureID);
}

KXSize KXTexture::size() { return _size; }

void KXTexture::setTint(KXColor tint) { _tint = tint; }

KXColor KXTexture::tint() { return _tint; }

void KXTexture::clear() {
    KX_GL_CHECK("KXTexture::clear");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID)
        return;
    _forgetPixels();
    const int width = static_cast<int>(_size.width), height = static_cast<int>(_size.height);
    const BindingScope binding(_textureID);
    const _KXTightPixelStore tight;
    const std::vector<char> emptyRow(static_cast<std::size_t>(width) * 4 * 64);
    for (int y = 0; y < height; y += 64)
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, y, width, std::min(64, height - y), GL_RGBA, GL_UNSIGNED_BYTE,
                        emptyRow.data());
}

void KXTexture::draw(int x, int y, int transformed) { draw(x, y, 1.0f, 1.0f, 0, 0, transformed); }

void KXTexture::draw(int x, int y, float opacity, float scale, int rotation, int flips, int transformed) {
    draw(0, 0, static_cast<int>(_size.width), static_cast<int>(_size.height), -1, -1, x, y, opacity, scale,
         rotation, flips, transformed);
}

void KXTexture::draw(int sx1, int sy1, int sx2, int sy2, int x, int y, int transformed) {
    draw(sx1, sy1, sx2, sy2, -1, -1, x, y, 1.0f, 1.0f, 0, 0, transformed);
}

void KXTexture::draw(int sx1, int sy1, int sx2, int sy2, int x, int y, float opacity, float scale,
                     int rotation, int flips, int transformed) {
    draw(sx1, sy1, sx2, sy2, -1, -1, x, y, opacity, scale, rotation, flips, transformed);
}

void KXTexture::draw(int sx1, int sy1, int sx2, int sy2, int width, int height, int x, int y, float opacity,
                     float scale, int rotation, int flips, int transformed) {
    KX_GL_CHECK("KXTexture::draw");
    if (!_isUsableHere())
        return;
    const int textureWidth = static_cast<int>(_size.width), textureHeight = static_cast<int>(_size.height);
    sx1 = limited(sx1, 0, textureWidth);
    sy1 = limited(sy1, 0, textureHeight);
    sx2 = limited(sx2, sx1, textureWidth);
    sy2 = limited(sy2, sy1, textureHeight);
    const int sourceWidth = sx2 - sx1, sourceHeight = sy2 - sy1;
    const _KXTextureRect source = {
        static_cast<float>(sx1) / static_cast<float>(textureWidth),
        static_cast<float>(sy1) / static_cast<float>(textureHeight),
        static_cast<float>(sx2) / static_cast<float>(textureWidth),
        static_cast<float>(sy2) / static_cast<float>(textureHeight),
    };
    const _KXAffine placement = transformed
                                    ? _KXPlacement(x, y, sourceWidth, sourceHeight, scale, rotation, flips)
                                    : _KXAffine{1, 0, static_cast<float>(x), 0, 1, static_cast<float>(y)};
    _KXDrawTexturedQuad(_textureID, source, {_tint.r, _tint.g, _tint.b, opacity}, placement,
                        static_cast<float>(width < 0 ? sourceWidth : width),
                        static_cast<float>(height < 0 ? sourceHeight : height));
}

void KXTexture::drawingPosition(int x, int y, int width, int height, float scale, int rotation, int flips) {
    KX_GL_CHECK("KXTexture::drawingPosition");
    if (!_KXCurrentGraphicsContext)
        return;
    glTranslatef(static_cast<float>(x), static_cast<float>(y), 0);
    glScalef(scale, scale, 0);
    if (rotation == 0 && flips == 0)
        return;
    const auto centreX = static_cast<float>(width / 2), centreY = static_cast<float>(height / 2);
    glTranslatef(centreX, centreY, 0);
    if ((flips & 2) && (flips & 4))
        glRotatef(180, 1, 1, 0);
    else if (flips & 2)
        glRotatef(180, 0, 1, 0);
    else if (flips & 4)
        glRotatef(180, 1, 0, 0);
    if (rotation != 0)
        glRotatef(static_cast<float>(rotation), 0, 0, 1);
    glTranslatef(-centreX, -centreY, 0);
}

void KXTexture::drawNineSlice(KXPoint position, KXSize size, int corner) {
    drawNineSlice(position, size, corner, 1);
}

void KXTexture::drawNineSlice(KXPoint position, KXSize size, int corner, float opacity) {
    const auto edge = static_cast<float>(corner);
    // Three columns and three rows: where each begins and ends on the texture, where it is drawn, how large.
    struct Band {
        int from, to, position, extent;
    };
    const auto bands = [corner, edge](float textureExtent, float start, float extent) {
        const int last = static_cast<int>(textureExtent);
        const int inner = static_cast<int>(std::max(static_cast<long long>(last) - corner, -1LL << 31));
        return std::array<Band, 3>{
            {{0, corner, _KXTruncate(start), -1},
             {corner, inner, _KXTruncate(start + edge), _KXTruncate(extent - 2 * edge)},
             {inner, last, _KXTruncate(start + extent - edge), -1}}};
    };
    const auto columns = bands(_size.width, position.x, size.width);
    const auto rows = bands(_size.height, position.y, size.height);
    const auto slice = [&](int column, int row) {
        const Band &horizontal = columns[column], &vertical = rows[row];
        // Corners keep the size they have on the texture; an edge is as thick as they ought to be.
        const int thickness = column == 1 || row == 1 ? corner : -1;
        draw(horizontal.from, vertical.from, horizontal.to, vertical.to,
             column == 1 ? horizontal.extent : thickness, row == 1 ? vertical.extent : thickness,
             horizontal.position, vertical.position, opacity, 1, 0, 0, -1);
    };
    constexpr int order[9][2] = {{0, 0}, {2, 0}, {0, 2}, {2, 2}, {1, 0}, {1, 2}, {0, 1}, {2, 1}, {1, 1}};
    for (const auto& [column, row] : order)
        slice(column, row);
}

// The whole texture as RGBA. Tightly packed, so pixels must have room for width times height times four
// values.
void KXTexture::_readBack(unsigned type, void* pixels) {
    const BindingScope binding(_textureID);
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
    const bool cached = _pixelCache;
    if (!cached) {
        _pixelCache = static_cast<float*>(std::malloc(width * 4 * height * sizeof(float)));
        if (!_pixelCache)
            return;
        _readBack(GL_FLOAT, _pixelCache);
    }
    const float* pixel =
        _pixelCache + (width * static_cast<std::size_t>(y) + static_cast<std::size_t>(x)) * 4;
    r = pixel[0];
    g = pixel[1];
    b = pixel[2];
    a = pixel[3];
    if (!keepCache && !cached)
        _forgetPixels();
}

KXColor KXTexture::getPixel(KXPoint point, int keepCache) {
    KXColor color;
    _getPixel(_KXTruncate(point.x), _KXTruncate(point.y), color.r, color.g, color.b, color.a, keepCache);
    return color;
}

int KXTexture::writeToPNG(const char* path) { return _savePNG(path); }

int KXTexture::_savePNG(const char* path) {
    KX_GL_CHECK("KXTexture::writeToPNG");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID || !path) {
        _KXReportError("Unable to write a PNG file: %s",
                       path ? "the texture is empty or its window is closed" : "no path");
        return 0;
    }
    const Surface surface(SDL_CreateRGBSurfaceWithFormat(
        0, static_cast<int>(_size.width), static_cast<int>(_size.height), 32, SDL_PIXELFORMAT_RGBA32));
    if (surface)
        _readBack(GL_UNSIGNED_BYTE, surface->pixels);
    if (!surface || IMG_SavePNG(surface.get(), path) != 0) {
        _KXReportError("Unable to write a PNG file (%s): %s", path, SDL_GetError());
        return 0;
    }
    return -1;
}

void KXTexture::setRenderContext() {
    KX_GL_CHECK("KXTexture::setRenderContext");
    if (!_textureID ||
        (_graphicsContext != _KXCurrentGraphicsContext && !_KXMakeGraphicsContextCurrent(_graphicsContext))) {
        _KXReportError("Unable to draw into a texture that is empty or whose window is closed");
        return;
    }
    _clearFBOID();
    unsigned status = 0;
    _framebufferID = _KXCreateFramebuffer(_textureID, &status);
    if (status != GL_FRAMEBUFFER_COMPLETE)
        std::printf("Fatal error. Framebutter not complete! texID: %d -> fboID: %d (%x)\n",
                    static_cast<int>(_textureID), static_cast<int>(_framebufferID), status);
    _forgetPixels();

    const int width = static_cast<int>(_size.width), height = static_cast<int>(_size.height);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, width, height, 0, -1, 1);
    // Half a turn about the x axis and up by the height: the texture's first row is its top, as in an image.
    const GLfloat upright[16] = {1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0, static_cast<float>(height), 0, 1};
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixf(upright);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    _KXCurrentRenderContext = this;
}

void KXTexture::unsetRenderContext() {
    KX_GL_CHECK("KXTexture::unsetRenderContext");
    const bool isTarget = _KXCurrentRenderContext == this;
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (scope && isTarget) {
        _KXBindFramebuffer(0);
        glBindTexture(GL_TEXTURE_2D, 0);
        // As a target the texture had replaced the model-view matrix, so there is none of the game's to
        // return to.
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
    _clearFBOID();
    if (isTarget)
        _KXCurrentRenderContext = nullptr;
}

void KXTexture::setClipTo(KXRect rect) {
    KX_GL_CHECK("KXTexture::setClipTo");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope)
        return;
    glEnable(GL_SCISSOR_TEST);
    glScissor(_KXTruncate(rect.origin.x), _KXTruncate(rect.origin.y),
              std::max(0, _KXTruncate(rect.size.width)), std::max(0, _KXTruncate(rect.size.height)));
}

void KXTexture::unsetClip() {
    KX_GL_CHECK("KXTexture::unsetClip");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope)
        return;
    glScissor(0, 0, static_cast<int>(_size.width), static_cast<int>(_size.height));
    glDisable(GL_SCISSOR_TEST);
}
