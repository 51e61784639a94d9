#pragma once

#include <Kobaltrix/KXTypes.h>

// The scopes that cut what is drawn into a batch instead of having OpenGL limit it.

/// What is drawn is cut to now, null for nothing.
inline constinit const KXRect* _KXCut = nullptr;
/// Has OpenGL limit what the scopes have cut until now, for the rest of each of them.
void _KXLeaveCutsToOpenGL();
