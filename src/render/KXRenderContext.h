#pragma once

#include <Kobaltrix/KXRenderContext.h>

/// The target that drawing goes to: a window or a texture.
inline constinit KXRenderContext* _KXCurrentRenderContext = nullptr;
/// The window whose OpenGL context is current; textures return to it when they stop being a target.
inline constinit KXRenderContext* _KXCurrentWindowRenderContext = nullptr;
