#include "platform/VerticalSync.h"

#include <OpenGL/OpenGL.h>

void _KXEnableVerticalSync() {
    const GLint interval = 1;
    CGLSetParameter(CGLGetCurrentContext(), kCGLCPSwapInterval, &interval);
}
