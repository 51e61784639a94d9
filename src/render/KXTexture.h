#pragma once

#include <Kobaltrix/KXTexture.h>

/// The OpenGL filter given to every texture when it is uploaded.
extern constinit int _KXTextureMode;
