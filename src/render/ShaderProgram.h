#pragma once

#include <Kobaltrix/KXShader.h>

#include <vector>

/// A value of a shader, as it is to be handed to OpenGL.
struct _KXShaderValue {
    int location, count; ///< How many numbers; 0 for a texture.
    float numbers[16];
    KXTexture* texture;
};

/// What a shader is made of.
struct KXShader::Program {
    ~Program();

    unsigned program = 0;                       // 0 if it cannot be had
    unsigned graphicsContext = 0;               // of the window it belongs to
    unsigned version = 0;                       // another one for each shader and with each change of a value
    int texture = -1, texel = -1, product = -1; // where OpenGL has the library's own
    std::vector<_KXShaderValue> values;

    bool isUsableHere() const;
};

/// Keeps a shader's values as they are now, for a run of a batch. @return a number for the scope below.
int _KXKeepShaderValues(const KXShader::Program& program);
/// Forgets what was kept.
void _KXForgetShaderValues();

/// Has OpenGL draw with a shader for as long as the scope lasts.
class _KXShaderScope {
public:
    /// @param kept of _KXKeepShaderValues(). @param texture what is drawn; 0 is white.
    /// @param product whether colours are to be multiplied by their alpha.
    _KXShaderScope(int kept, unsigned texture, bool product);
    ~_KXShaderScope();
    _KXShaderScope(const _KXShaderScope&) = delete;
    _KXShaderScope& operator=(const _KXShaderScope&) = delete;

private:
    static constexpr int mostTextures = 4;

    int _previousProgram = 0, _previousUnit = 0;
    int _bound[mostTextures] = {}, _boundCount = 0;
};
