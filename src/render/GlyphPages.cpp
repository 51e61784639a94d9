#include "render/GlyphPages.h"

#include "render/DrawBatch.h"
#include "render/Driver.h"
#include "render/PixelStore.h"
#include "render/TextureBinding.h"

#include <SDL_opengl.h>

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

// White pixels with some opacities, or with none.
static std::vector<unsigned char> pixelsOf(const Layout& layout, int width, int height,
                                           const unsigned char* opacities, int pitch) {
    const auto channels = static_cast<std::size_t>(layout.channels);
    std::vector<unsigned char> pixels(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * channels, 255);
    unsigned char* opacity = pixels.data() + channels - 1;
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column, opacity += channels)
            *opacity = opacities ? opacities[row * pitch + column] : 0;
    return pixels;
}

// 0 if the driver cannot hold it.
static unsigned makeTexture(const Layout& layout, int side) {
    const std::vector<unsigned char> empty = pixelsOf(layout, side, side, nullptr, 0);
    unsigned texture = 0;
    glGenTextures(1, &texture);
    const UploadScope scope(texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, layout.filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, layout.filter);
    glTexImage2D(GL_TEXTURE_2D, 0, layout.internalFormat, side, side, 0, layout.format, GL_UNSIGNED_BYTE,
                 empty.data());
    return _KXHeldTexture(texture, side);
}

int _KXGlyphPages::largestSide() {
    GLint side = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &side);
    return side;
}

static void destroy(const _KXGlyphPage& page) {
    if (page.hasSharp())
        glDeleteTextures(1, &page.sharp);
    glDeleteTextures(1, &page.smooth);
}

bool _KXGlyphPages::add(int side) {
    _pages.reserve(_pages.size() + 1);
    _KXGlyphPage page = {};
    page.smooth = makeTexture(smooth, side);
    page.sharp =
        page.smooth && _KXCurrentDriver == _KXDriver::Software ? makeTexture(sharp, side) : page.smooth;
    if (page.smooth && page.sharp)
        _pages.push_back(page);
    else
        destroy(page);
    return page.smooth && page.sharp;
}

void _KXGlyphPages::upload(int x, int y, int width, int height, const unsigned char* bitmap, int pitch) {
    ++_KXDrawStatistics.textureUploads;
    const auto uploadTo = [&](unsigned texture, const Layout& layout) {
        const UploadScope scope(texture);
        glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, width, height, layout.format, GL_UNSIGNED_BYTE,
                        pixelsOf(layout, width, height, bitmap, pitch).data());
    };
    uploadTo(last().smooth, smooth);
    if (last().hasSharp())
        uploadTo(last().sharp, sharp);
}

void _KXGlyphPages::clear() {
    if (_pages.empty())
        return;
    _KXFlushBatch(KXDrawFlushTextureChange);
    for (const _KXGlyphPage& page : _pages)
        destroy(page);
    _pages.clear();
}
