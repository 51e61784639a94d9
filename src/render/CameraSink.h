#pragma once

#include "render/DrawSink.h"

/// Has a camera look at what is drawn, and hands on to the sink that would be there without it.
_KXDrawSink& _KXCameraSink();
/// The way that draws go without a camera.
_KXDrawSink& _KXSinkWithoutCamera();
/// The same for triangles.
void _KXDrawMeshSeen(const _KXMeshCorner* corners, int count);
void _KXDrawMeshWithoutCamera(const _KXMeshCorner* corners, int count);
/// Has it look anew which part of the target is to be seen.
void _KXForgetWhatIsSeen();
