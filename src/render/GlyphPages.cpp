#include "render/GlyphPages.h"

#include "render/DrawBatch.h"
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
} // namespace

int _KXGlyphPages::largestSide() {
    GLint side = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &side);
    return side;
}

void _KXGlyphPages::add(int side) {
    const std::vector<unsigned char> empty(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    _textures.reserve(_textures.size() + 1);
    unsigned texture = 0;
    glGenTextures(1, &texture);
    _textures.push_back(texture);
    const UploadScope scope(texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, side, side, 0, GL_ALPHA, GL_UNSIGNED_BYTE, empty.data());
}

void _KXGlyphPages::upload(int x, int y, int width, int height, const unsigned char* bitmap, int pitch) {
    const UploadScope scope(last());
    ++_KXDrawStatistics.textureUploads;
    glPixelStorei(GL_UNPACK_ROW_LENGTH, pitch);
    glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, width, height, GL_ALPHA, GL_UNSIGNED_BYTE, bitmap);
}

void _KXGlyphPages::clear() {
    if (_textures.empty())
        return;
    _KXFlushBatch(KXDrawFlushTextureChange);
    glDeleteTextures(static_cast<GLsizei>(_textures.size()), _textures.data());
    _textures.clear();
}
