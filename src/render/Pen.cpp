#include "render/Pen.h"

#include "core/ground/HeapGlobal.h"
#include "render/CameraMap.h"
#include "render/DrawStatistics.h"
#include "render/GLFunctions.h"
#include "render/KXRenderContext.h"
#include "render/ShaderProgram.h"

#include <utility>
#include <vector>

static constinit _KXHeapGlobal<std::vector<KXBlendMode>> pushed;

static constinit _KXHeapGlobal<std::vector<const KXShader::Program*>> pushedShaders;
static constinit _KXPenState state = {};

// A mode and two bits. Where there is no mode but one of the bits, it is alpha.
static void makePen(const _KXPenState& of) {
    state = of;
    const int kind = 2 * state.fromProduct + state.intoProduct;
    const int mode = state.mode || !kind ? state.mode : KXBlendAlpha;
    _KXCurrentPen.blend = static_cast<unsigned char>(mode ? 4 * mode + kind : 0);
    _KXCurrentShader = state.shader && state.shader->isUsableHere() ? state.shader : nullptr;
    _KXCurrentPen.shader = _KXCurrentShader ? _KXCurrentShader->version : 0;
}

static KXBlendMode known(KXBlendMode mode) {
    return mode >= KXBlendInherited && mode <= KXBlendErase ? mode : KXBlendInherited;
}

void KXPushBlendMode(KXBlendMode mode) {
    pushed.get().push_back(state.mode);
    makePen({known(mode), state.fromProduct, state.intoProduct, state.shader});
}

void KXPopBlendMode() {
    if (!pushed.find() || pushed.get().empty())
        return;
    makePen({pushed.get().back(), state.fromProduct, state.intoProduct, state.shader});
    pushed.get().pop_back();
}

static void useShader(const KXShader::Program* shader) {
    makePen({state.mode, state.fromProduct, state.intoProduct, shader});
}

void KXPushShader(KXShader* shader) {
    pushedShaders.get().push_back(state.shader);
    useShader(shader ? shader->_program() : nullptr);
}

void KXPopShader() {
    if (!pushedShaders.find() || pushedShaders.get().empty())
        return;
    const KXShader::Program* const shader = pushedShaders.get().back();
    pushedShaders.get().pop_back();
    useShader(shader);
}

void _KXShaderHasChanged(const KXShader::Program& shader) {
    if (state.shader == &shader)
        useShader(&shader);
}

void _KXForgetShader(const KXShader::Program* shader) {
    if (pushedShaders.find())
        for (const KXShader::Program*& each : pushedShaders.get())
            if (each == shader)
                each = nullptr;
    if (state.shader == shader)
        useShader(nullptr);
}

void _KXSetTargetPremultiplied(bool premultiplied) {
    makePen({state.mode, state.fromProduct, premultiplied, state.shader});
}

void _KXSetTarget(KXRenderContext* target, bool premultiplied) {
    _KXCurrentRenderContext = target;
    _KXSetTargetPremultiplied(premultiplied);
    _KXAimCamera();
}

void _KXFreePen() {
    pushed.free();
    pushedShaders.free();
    makePen({});
}

_KXPenScope::_KXPenScope() : _previous(state) { makePen({}); }

_KXPenScope::_KXPenScope(KXBlendMode mode, bool premultiplied, const KXShader* shader) : _previous(state) {
    makePen({known(mode) ? mode : state.mode, premultiplied, state.intoProduct,
             shader ? shader->_program() : state.shader});
}

_KXPenScope::~_KXPenScope() { makePen(_previous); }

bool _KXWantsProduct(_KXPen pen) {
    const int of = pen.blend / 4;
    return (of == KXBlendMultiply || of == KXBlendScreen) && !(pen.blend & 2);
}

namespace {
// What colours and alphas of the source and of the target are multiplied by before they are added.
struct Factors {
    GLenum source, target, sourceAlpha, targetAlpha;
};

Factors factorsOf(unsigned char blend) {
    const bool fromProduct = blend & 2, intoProduct = blend & 1;
    const GLenum straight = fromProduct ? GL_ONE : GL_SRC_ALPHA;
    switch (blend / 4) {
    case KXBlendPremultiplied:
        return {GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA};
    case KXBlendAdd:
        return {straight, GL_ONE, GL_ZERO, GL_ONE};
    case KXBlendMultiply:
        return {GL_DST_COLOR, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE};
    case KXBlendScreen:
        return {GL_ONE, GL_ONE_MINUS_SRC_COLOR, GL_ONE, GL_ONE_MINUS_SRC_ALPHA};
    case KXBlendReplace:
        return {intoProduct ? straight : GL_ONE, GL_ZERO, GL_ONE, GL_ZERO};
    case KXBlendErase:
        return {GL_ZERO, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE_MINUS_SRC_ALPHA};
    default: // into an ordinary target as OpenGL's one function for both
        return {straight, GL_ONE_MINUS_SRC_ALPHA, intoProduct ? GL_ONE : straight, GL_ONE_MINUS_SRC_ALPHA};
    }
}
} // namespace

void _KXBlendScope::use(_KXPen pen) {
    const unsigned char before = std::exchange(_blend, pen.blend);
    if (pen.blend == before)
        return;
    if (pen.blend == 0)
        return glPopAttrib();
    if (before == 0)
        glPushAttrib(GL_COLOR_BUFFER_BIT);
    ++_KXDrawStatistics.blendChanges;
    glEnable(GL_BLEND);
    const auto [source, target, sourceAlpha, targetAlpha] = factorsOf(pen.blend);
    if (!_KXGL.blendFuncSeparate)
        return glBlendFunc(source, target);
    _KXGL.blendEquation(GL_FUNC_ADD);
    _KXGL.blendFuncSeparate(source, target, sourceAlpha, targetAlpha);
}
