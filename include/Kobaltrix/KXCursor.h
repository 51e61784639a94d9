#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The pointer's shape. KXShowMouse() hides it, KXSetMouseRelative() holds it.

class KXTexture;

/// Shapes that the system has.
enum KXCursor : int {
    KXCursorArrow = 0,
    KXCursorText, ///< Between characters.
    KXCursorHand, ///< On what can be clicked.
    KXCursorCrosshair,
    KXCursorWait,
    KXCursorMove,   ///< In all directions.
    KXCursorWidth,  ///< A border that moves left and right.
    KXCursorHeight, ///< A border that moves up and down.
    KXCursorForbidden
};

/// Gives the pointer one of the system's shapes, in all windows. To be called when it changes rather than in
/// each step. @return -1, or 0 with a text in KXError() where the system has no pointer.
KX_API int KXSetCursor(KXCursor cursor);
/// Gives the pointer a shape of the game's own: a copy of the texture's pixels, one to a pixel of the screen.
/// @param texture is not kept. @param hotSpot the pixel of the texture that points, from its top left.
/// @return -1, or 0 with a text in KXError() for an empty texture, for a hot spot outside it, or where the
/// system refuses.
KX_API int KXSetCursor(KXTexture& texture, KXPoint hotSpot);
