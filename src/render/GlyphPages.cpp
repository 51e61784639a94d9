#include "render/GlyphPages.h"

#include "render/DrawStatistics.h"
#include "render/Driver.h"
#include "render/PixelStore.h"
#include "render/TextureBinding.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <vector>

// Uploads bind textures and read memory as the pixel-store state says: both are the game's own.
namespace {
struct UploadScope {
    explicit UploadScope(unsigned texture) : binding(texture) {}

    const _KXTextureBindingScope binding;
    const _KXTightPixelStore pixelStore;
};

struct Layout {
    GLint filter, internalFormat;
    GLenum format;
    int channels; // the last of which is the opacity
};
} // namespace

static constexpr Layout smooth = {GL_LINEAR, GL_LUMINANCE_ALPHA, GL_LUMINANCE_ALPHA, 2};
static constexpr Layout smoothColored = {GL_LINEAR, GL_RGBA, GL_BGRA, 4};
// Software draws textures the fast way if their pixels lie as in a window, which this order asks for.
static constexpr Layout sharp = {GL_NEAREST, GL_RGBA, GL_BGRA, 4};

static const Layout& smoothOf(bool isColored) { return isColored ? smoothColored : smooth; }

// The pixels of a glyph and a border around it.
static std::vector<unsigned char> pixelsOf(const Layout& layout, const _KXGlyphBitmap& bitmap) {
    const auto channels = static_cast<std::size_t>(layout.channels);
    const auto width = static_cast<std::size_t>(bitmap.width + 2 * _KXGlyphBorder),
               height = static_cast<std::size_t>(bitmap.height + 2 * _KXGlyphBorder);
    std::vector<unsigned char> pixels(width * height * channels, bitmap.isColored ? 0 : 255);
    for (std::size_t i = 0; i < width * height; ++i)
        pixels[(i + 1) * channels - 1] = 0;
    for (int row = 0; row < bitmap.height; ++row) {
        const unsigned char* from = bitmap.bytes + row * bitmap.pitch;
        unsigned char* to =
            &pixels[(static_cast<std::size_t>(row + _KXGlyphBorder) * width + _KXGlyphBorder) * channels];
        for (int column = 0; column < bitmap.width; ++column, to += channels) {
            if (!bitmap.isColored) {
                to[channels - 1] = *from++;
                continue;
            }
            std::copy_n(from, channels, to);
            from += channels;
        }
    }
    return pixels;
}

// 0 if the driver cannot hold it.
static unsigned makeTexture(const Layout& layout, int side) {
    unsigned texture = 0;
    glGenTextures(1, &texture);
    const UploadScope scope(texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, layout.filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, layout.filter);
    // What it holds is undefined: what is drawn of it, borders included, was uploaded before.
    glTexImage2D(GL_TEXTURE_2D, 0, layout.internalFormat, side, side, 0, layout.format, GL_UNSIGNED_BYTE,
                 nullptr);
    return _KXHeldTexture(texture, side);
}

int _KXLargestTextureSide() {
    GLint side = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &side);
    return side;
}

void _KXDeleteGlyphPage(const _KXGlyphPage& page) {
    if (page.hasSharp())
        glDeleteTextures(1, &page.sharp);
    glDeleteTextures(1, &page.smooth);
}

_KXGlyphPage _KXMakeGlyphPage(int side, bool isColored) {
    _KXGlyphPage page = {0, 0, isColored};
    page.smooth = makeTexture(smoothOf(isColored), side);
    page.sharp =
        page.smooth && _KXCurrentDriver == _KXDriver::Software ? makeTexture(sharp, side) : page.smooth;
    if (page.smooth && page.sharp)
        return page;
    _KXDeleteGlyphPage(page);
    return {};
}

std::size_t _KXBytesOfGlyphPage(const _KXGlyphPage& page, int side) {
    const auto pixels = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    return pixels * static_cast<std::size_t>(smoothOf(page.isColored).channels +
                                             (page.hasSharp() ? sharp.channels : 0));
}

void _KXUploadGlyph(const _KXGlyphPage& page, int x, int y, const _KXGlyphBitmap& bitmap) {
    ++_KXDrawStatistics.textureUploads;
    const auto uploadTo = [&](unsigned texture, const Layout& layout) {
        const std::vector<unsigned char> pixels = pixelsOf(layout, bitmap);
        const UploadScope scope(texture);
        glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, bitmap.width + 2 * _KXGlyphBorder,
                        bitmap.height + 2 * _KXGlyphBorder, layout.format, GL_UNSIGNED_BYTE, pixels.data());
    };
    uploadTo(page.smooth, smoothOf(page.isColored));
    if (page.hasSharp())
        uploadTo(page.sharp, sharp);
}
