#pragma once

#include <Kobaltrix/KXCamera.h>

#include <cmath>

class _KXDrawSink;
struct _KXMeshCorner;

/// The map of a camera from its world to the target. What is near the centre stays exact, wherever that is.
struct _KXCameraMap {
    bool seesAnything = false;
    float xx = 1, xy = 0, yx = 0, yy = 1;
    KXPoint centre = {0, 0}, middle = {0, 0};
    bool hasSharpText = false;

    KXPoint operator()(KXPoint world) const {
        const float x = world.x - centre.x, y = world.y - centre.y;
        return {xx * x + xy * y + middle.x, yx * x + yy * y + middle.y};
    }
    /// How large the world is seen; 1 where nothing is.
    float zoom() const { return seesAnything ? std::hypot(xx, yx) : 1; }
    /// Whether what has been upright still is.
    bool isUpright() const { return xy == 0 && yx == 0 && xx > 0; }
};

/// Whether a camera is pushed; else all maps are needless.
inline constinit bool _KXHasCamera = false;
/// The map of the one that holds.
inline constinit _KXCameraMap _KXCurrentCamera = {};

/// Has the camera that holds look at the current target.
void _KXAimCamera();
/// The area of the camera that holds, in the target's units.
KXRect _KXCameraArea();
/// Forgets all cameras.
void _KXFreeCameras();
/// Multiplies the camera that holds onto OpenGL's current matrix.
void _KXMultiplyCamera();

/// No camera for as long as the scope lasts, for what the library does for itself.
class _KXNoCameraScope {
public:
    _KXNoCameraScope();
    ~_KXNoCameraScope();
    _KXNoCameraScope(const _KXNoCameraScope&) = delete;
    _KXNoCameraScope& operator=(const _KXNoCameraScope&) = delete;
};

/// Has a camera look at what is drawn, and hands on to the sink that would be there without it.
_KXDrawSink& _KXCameraSink();
/// The way that draws go without a camera.
_KXDrawSink& _KXSinkWithoutCamera();
/// The same for triangles.
void _KXDrawMeshSeen(const _KXMeshCorner* corners, int count);
void _KXDrawMeshWithoutCamera(const _KXMeshCorner* corners, int count);
/// Has it look anew which part of the target is to be seen.
void _KXForgetWhatIsSeen();
