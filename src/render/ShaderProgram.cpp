#include "render/ShaderProgram.h"

#include "core/ground/HeapGlobal.h"
#include "render/ContextParts.h"
#include "render/DrawStatistics.h"
#include "render/GLFunctions.h"

#include <Kobaltrix/KXTexture.h>

#include <algorithm>

namespace {
struct Kept {
    const KXShader::Program* program;
    std::vector<_KXShaderValue> values;
};
struct AllKept {
    std::vector<Kept> entries; // those beyond the count keep their memory
    int count = 0;
};
} // namespace

static constinit _KXHeapGlobal<AllKept> kept;

int _KXKeepShaderValues(const KXShader::Program& program) {
    auto& [entries, count] = kept.get();
    if (static_cast<std::size_t>(count) == entries.size())
        entries.emplace_back();
    Kept& entry = entries[static_cast<std::size_t>(count)];
    entry.program = &program;
    entry.values = program.values;
    return count++;
}

void _KXForgetShaderValues() {
    if (kept.find())
        kept.get().count = 0;
}

// A texture of one white pixel, which shapes are drawn with.
static unsigned whiteTexture() {
    unsigned& white = _KXCurrentContextParts().whiteTexture;
    if (white)
        return white;
    constexpr unsigned char pixel[4] = {255, 255, 255, 255};
    glGenTextures(1, &white);
    glBindTexture(GL_TEXTURE_2D, white);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, 4, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return white;
}

static void setNumbers(const _KXShaderValue& value) {
    switch (value.count) {
    case 1:
        return _KXGL.uniform1fv(value.location, 1, value.numbers);
    case 2:
        return _KXGL.uniform2fv(value.location, 1, value.numbers);
    case 4:
        return _KXGL.uniform4fv(value.location, 1, value.numbers);
    default:
        return _KXGL.uniformMatrix4fv(value.location, 1, GL_FALSE, value.numbers);
    }
}

_KXShaderScope::_KXShaderScope(int number, unsigned texture, bool product) {
    ++_KXDrawStatistics.shaderChanges;
    glGetIntegerv(GL_CURRENT_PROGRAM, &_previousProgram);
    glGetIntegerv(GL_ACTIVE_TEXTURE, &_previousUnit);
    const auto& [program, values] = kept.get().entries[static_cast<std::size_t>(number)];
    _KXGL.useProgram(program->program);
    for (const _KXShaderValue& value : values) {
        if (value.count > 0) {
            setNumbers(value);
        } else if (_boundCount < mostTextures) {
            _KXGL.activeTexture(GL_TEXTURE1 + static_cast<GLenum>(_boundCount));
            glGetIntegerv(GL_TEXTURE_BINDING_2D, &_bound[_boundCount]);
            glBindTexture(GL_TEXTURE_2D,
                          value.texture && value.texture->_isUsableHere() ? value.texture->_name() : 0);
            _KXGL.uniform1i(value.location, ++_boundCount);
        }
    }
    _KXGL.activeTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture ? texture : whiteTexture());
    _KXGL.uniform1i(program->texture, 0);
    const float isProduct = product ? 1.0f : 0.0f;
    _KXGL.uniform1fv(program->product, 1, &isProduct);
    if (program->texel < 0)
        return;
    GLint width = 1, height = 1;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    const float texel[] = {1 / static_cast<float>(std::max(1, width)),
                           1 / static_cast<float>(std::max(1, height))};
    _KXGL.uniform2fv(program->texel, 1, texel);
}

_KXShaderScope::~_KXShaderScope() {
    for (int i = 0; i < _boundCount; ++i) {
        _KXGL.activeTexture(GL_TEXTURE1 + static_cast<GLenum>(i));
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(_bound[i]));
    }
    _KXGL.activeTexture(static_cast<GLenum>(_previousUnit));
    _KXGL.useProgram(static_cast<GLuint>(_previousProgram));
}
