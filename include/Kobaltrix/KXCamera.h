#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Cameras: a world that is larger than the window, drawn where a camera looks. What is pushed holds for
/// everything that the library draws, in windows and textures, at once and in a batch; OpenGL's matrices stay
/// what they are, and so does what a game draws by OpenGL itself. Needs the thread that owns the OpenGL
/// context.
///
/// @code
/// KXPushCamera(camera);
/// drawWorld(); // in the world's units
/// KXPopCamera();
/// drawScore(); // in the window's
/// @endcode

/// Where a camera looks, and what of the target it fills.
struct KXCamera {
    /// The point of the world that lies in the middle of the area.
    KXPoint centre = {0, 0};
    /// How large the world is seen: 2 is twice as large. Above 0.
    float zoom = 1;
    /// How far the camera is turned, in degrees, clockwise: the world is seen turned the other way.
    float rotation = 0;
    /// The part of the target that it fills and draws in, in the target's units: points of a window, units of
    /// its logical size, pixels of a texture. A negative width or height reaches to the edge, so the area is
    /// the whole target unless it is set.
    KXRect area = {{0, 0}, {-1, -1}};
    /// Non-zero to have glyphs made about as large as they are seen, in the target's pixels: sharp text at
    /// any zoom. They are made in steps of the zoom (1, 1.25, 1.5, 1.75, 2, 2.5 and so on) and up to 256
    /// pixels high, so a zoom that glides makes them anew a few times only.
    int sharpText = 0;
};

/// Has everything that the library draws seen by a camera, until KXPopCamera(). Of several that are pushed
/// the last one holds, alone. A camera that sees nothing (its zoom is not above 0, its area is empty, a
/// number is none or infinite) has nothing drawn.
///
/// Call it when the target is chosen: a camera with an area of its own limits drawing to it, within the limit
/// there is, and lets a batch out for that; any other lets nothing out. Positions that are documented as
/// truncated are truncated in the world; lines stay as thin as they are, and text is scaled like a picture
/// unless KXCamera::sharpText is set. In a batch what lies outside is left out for next to nothing.
/// KXDrawLine() and its kind heed it, KXClear(), setClipTo() and KXTexture::drawingPosition() do not, and
/// widgets do not know where the mouse is then.
KX_API void KXPushCamera(const KXCamera& camera);
/// Has drawing seen as before the last KXPushCamera(), within the limit of that time. Without one it does
/// nothing.
KX_API void KXPopCamera();

/// The point of the world that a camera shows at a point of the current target: what is under the mouse. It
/// need not be pushed. (0, 0) for a camera that sees nothing.
KX_API KXPoint KXCameraToWorld(const KXCamera& camera, KXPoint point);
/// Where in the current target a camera shows a point of the world. (0, 0) for a camera that sees nothing.
KX_API KXPoint KXCameraFromWorld(const KXCamera& camera, KXPoint world);
/// The upright rectangle around all of the world that a camera shows: what lies outside need not be drawn.
/// All zeros for a camera that sees nothing.
KX_API KXRect KXCameraBounds(const KXCamera& camera);
