#pragma once

#include <Kobaltrix/KXRenderContext.h>

/// The target that drawing goes to: a window or a texture.
inline constinit KXRenderContext* _KXCurrentRenderContext = nullptr;
/// The window that was made current last, by its own setRenderContext() or by that of a texture of it. Null
/// until there was one, and once it is closed.
inline constinit KXRenderContext* _KXCurrentWindowRenderContext = nullptr;
/// Number of the OpenGL context that is current (see GraphicsContext.h), 0 for none.
inline constinit unsigned _KXCurrentGraphicsContext = 0;
