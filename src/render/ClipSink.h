#pragma once

#include "render/DrawSink.h"

/// A way that cuts what is drawn into a batch to the scope that cuts, and hands it on.
_KXDrawSink& _KXClipSink();
/// The same for triangles.
void _KXDrawMeshCut(const _KXMeshCorner* corners, int count);
