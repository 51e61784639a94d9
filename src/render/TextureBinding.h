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
