#pragma once

#include <Kobaltrix/KXBlendMode.h>
#include <Kobaltrix/KXShader.h>
#include <Kobaltrix/KXTypes.h>

class KXRenderContext;

/// What draws are told apart by besides their texture: a run of a batch has one pen.
struct _KXPen {
    /// How colours mix, of what kind into what kind of target; 0 leaves that to the game's own OpenGL.
    unsigned char blend = 0;
    /// The version of a shader and of its values; 0 without one.
    unsigned shader = 0;

    bool isPlain() const { return blend == 0 && shader == 0; }
    bool operator==(const _KXPen&) const = default;
};

/// The pen of what is drawn now.
inline constinit _KXPen _KXCurrentPen = {};
/// The shader of that pen, null without one.
inline constinit const KXShader::Program* _KXCurrentShader = nullptr;

/// A shader has other values than before.
void _KXShaderHasChanged(const KXShader::Program& shader);
/// A shader ends.
void _KXForgetShader(const KXShader::Program* shader);

/// Has the target count as one whose colours are multiplied by their alpha, or not.
void _KXSetTargetPremultiplied(bool premultiplied);
/// Makes something the target of drawing; null for nothing.
void _KXSetTarget(KXRenderContext* target, bool premultiplied);
/// Forgets all pushed modes.
void _KXFreePen();

/// What the pen is made of.
struct _KXPenState {
    KXBlendMode mode = KXBlendInherited;
    /// Whether the colours of what is drawn, and those of the target, are multiplied by their alpha.
    bool fromProduct = false, intoProduct = false;
    const KXShader::Program* shader = nullptr;
};

/// Another pen for as long as the scope lasts.
class _KXPenScope {
public:
    /// The plain pen, for what the library does for itself.
    _KXPenScope();
    /// For what has a mode of its own. @param premultiplied whether its colours are multiplied by their
    /// alpha.
    _KXPenScope(KXBlendMode mode, bool premultiplied, const KXShader* shader);
    ~_KXPenScope();
    _KXPenScope(const _KXPenScope&) = delete;
    _KXPenScope& operator=(const _KXPenScope&) = delete;

private:
    _KXPenState _previous;
};

/// OpenGL's blending, as pens want it, for as long as the scope lasts.
class _KXBlendScope {
public:
    _KXBlendScope() = default;
    ~_KXBlendScope() { use({}); }
    _KXBlendScope(const _KXBlendScope&) = delete;
    _KXBlendScope& operator=(const _KXBlendScope&) = delete;

    /// Sets OpenGL up for a pen.
    void use(_KXPen pen);

private:
    unsigned char _blend = 0;
};

/// Whether colours that are not multiplied by their alpha have to be for a pen.
bool _KXWantsProduct(_KXPen pen);
