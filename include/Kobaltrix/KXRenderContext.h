#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// What every target of drawing has in common.

/// Something the library can draw into: a KXWindow or a KXTexture. In this base every operation does nothing.
/// Never deleted through this type.
class KX_API KXRenderContext {
public:
    /// Makes this the target of drawing.
    virtual void setRenderContext() {}
    /// Stops drawing into it.
    virtual void unsetRenderContext() {}
    /// Limits drawing to a rectangle in the target's units.
    virtual void setClipTo(KXRect) {}
    /// Removes the limit.
    virtual void unsetClip() {}

protected:
    KXRenderContext() = default;
    ~KXRenderContext() = default;
    /// Copies nothing: a base has no state.
    KXRenderContext(const KXRenderContext&) = default;
    /// Copies nothing: a base has no state.
    KXRenderContext& operator=(const KXRenderContext&) = default;
};

/// The target that drawing goes to: what setRenderContext() was called for last. Null before the first time
/// and once that target has gone or let go; never a destroyed object.
KX_API KXRenderContext* KXCurrentRenderContext();
