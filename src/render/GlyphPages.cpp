#include "render/GlyphPages.h"

#include "render/DrawStatistics.h"
#include "render/Driver.h"
#include "render/PixelStore.h"
#include "render/TextureBinding.h"

#include <SDL_opengl.h>

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
// Software draws textures the fast way if their pixels lie as in a window, which this order asks for.
static constexpr Layout sharp = {GL_NEAREST, GL_RGBA, GL_BGRA, 4};

// White pixels with the opacities of a glyph and a border around it.
static std::vector<unsigned char> pixelsOf(const Layout& layout, const _KXGlyphBitmap& bitmap) {
    const auto channels = static_cast<std::size_t>(layout.channels);
    const int width = bitmap.width + 2 * _KXGlyphBorder, height = bitmap.height + 2 * _KXGlyphBorder;
    std::vector<unsigned char> pixels(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * channels, 255);
    unsigned char* opacity = pixels.data() + channels - 1;
    for (int row = -_KXGlyphBorder; row < bitmap.height + _KXGlyphBorder; ++row)
        for (int column = -_KXGlyphBorder; column < bitmap.width + _KXGlyphBorder; ++column) {
            const bool isInside = row >= 0 && row < bitmap.height && column >= 0 && column < bitmap.width;
            *opacity = isInside ? bitmap.opacities[row * bitmap.pitch + column] : 0;
            opacity += channels;
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

_KXGlyphPage _KXMakeGlyphPage(int side) {
    _KXGlyphPage page = {};
    page.smooth = makeTexture(smooth, side);
    page.sharp =
        page.smooth && _KXCurrentDriver == _KXDriver::Software ? makeTexture(sharp, side) : page.smooth;
    if (page.smooth && page.sharp)
        return page;
    _KXDeleteGlyphPage(page);
    return {};
}

std::size_t _KXBytesOfGlyphPage(const _KXGlyphPage& page, int side) {
    const auto pixels = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    return pixels * static_cast<std::size_t>(smooth.channels + (page.hasSharp() ? sharp.channels : 0));
}

void _KXUploadGlyph(const _KXGlyphPage& page, int x, int y, const _KXGlyphBitmap& bitmap) {
    ++_KXDrawStatistics.textureUploads;
    const auto uploadTo = [&](unsigned texture, const Layout& layout) {
        const std::vector<unsigned char> pixels = pixelsOf(layout, bitmap);
        const UploadScope scope(texture);
        glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, bitmap.width + 2 * _KXGlyphBorder,
                        bitmap.height + 2 * _KXGlyphBorder, layout.format, GL_UNSIGNED_BYTE, pixels.data());
    };
    uploadTo(page.smooth, smooth);
    if (page.hasSharp())
        uploadTo(page.sharp, sharp);
}
