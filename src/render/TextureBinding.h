#pragma once

#include <SDL_opengl.h>

/// Binds a texture for what is no draw, and gives the game's own binding back.
class _KXTextureBindingScope {
public:
    explicit _KXTextureBindingScope(unsigned texture) {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_previous);
        glBindTexture(GL_TEXTURE_2D, texture);
    }
    ~_KXTextureBindingScope() { glBindTexture(GL_TEXTURE_2D, static_cast<unsigned>(_previous)); }
    _KXTextureBindingScope(const _KXTextureBindingScope&) = delete;
    _KXTextureBindingScope& operator=(const _KXTextureBindingScope&) = delete;

private:
    GLint _previous = 0;
};

/// The texture that is bound and was given pixels, if the driver holds them. If not it is deleted, and 0.
inline unsigned _KXHeldTexture(unsigned texture, int width) {
    GLint held = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &held);
    if (texture && held == width)
        return texture;
    glGetError(); // out of memory: told here, not by the next check that finds it
    glDeleteTextures(1, &texture);
    return 0;
}
