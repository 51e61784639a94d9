#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// How what is drawn meets what is there: for one draw (KXDrawOptions::blend) or for all that follows,
/// shapes, text and widgets too. Needs the thread that owns the OpenGL context.

/// How colours mix. "Opacity" is the alpha of what is drawn, 0.0 to 1.0; with 0 nothing changes, but for
/// #KXBlendReplace. What becomes of the target's own alpha is told where it counts: in a texture, see
/// KXTexture::setPremultiplied().
enum KXBlendMode : int {
    /// As pushed last; where nothing is, as OpenGL has it: #KXBlendAlpha, unless the game has called
    /// glBlendFunc() itself.
    KXBlendInherited = 0,
    KXBlendAlpha = 1,         ///< Covers what is there by its opacity.
    KXBlendPremultiplied = 2, ///< The same, of colours that are multiplied by their alpha already.
    KXBlendAdd = 3,           ///< Adds light: glows, sparks. Leaves the target's alpha.
    KXBlendMultiply = 4,      ///< Darkens: white changes nothing. Leaves the target's alpha.
    KXBlendScreen = 5,        ///< Brightens, but never beyond white: black changes nothing.
    KXBlendReplace = 6,       ///< Puts colour and alpha in the place of what is there.
    KXBlendErase = 7          ///< Takes away from colour and alpha what it covers, whatever its own colour.
};

/// Has everything that the library draws mix like this, until KXPopBlendMode(). Modes nest; in a batch, each
/// change begins another draw call and lets nothing out. Any other value counts as #KXBlendInherited, which
/// within another mode is drawing as if none were pushed.
///
/// Multiply and screen heed opacity by a small program. Where the driver has none, or the game has switched
/// something on in OpenGL that keeps it from running, they are right for what is opaque.
KX_API void KXPushBlendMode(KXBlendMode mode);
/// Has drawing mix as before the last KXPushBlendMode(). Without one it does nothing.
KX_API void KXPopBlendMode();
