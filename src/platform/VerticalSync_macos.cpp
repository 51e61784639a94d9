#include "platform/VerticalSync.h"

#include <OpenGL/OpenGL.h>

bool _KXSetVerticalSync(int interval) {
    const GLint value = interval;
    return interval >= 0 && // adaptive is not to be had
           CGLSetParameter(CGLGetCurrentContext(), kCGLCPSwapInterval, &value) == kCGLNoError;
}

int _KXVerticalSync() {
    GLint value = 0;
    CGLGetParameter(CGLGetCurrentContext(), kCGLCPSwapInterval, &value);
    return value;
}
