#include "platform/MacStandIns.h"

#include <cstring>

#include <OpenGL/OpenGL.h>
#include <mach-o/dyld.h>

MacStandIns macStandIns;

int _NSGetExecutablePath(char* path, std::uint32_t* size) {
    const auto needed = static_cast<std::uint32_t>(macStandIns.programFile.size() + 1);
    const bool fits = *size >= needed;
    if (fits)
        std::memcpy(path, macStandIns.programFile.c_str(), needed);
    else
        *size = needed;
    return fits ? 0 : -1;
}

struct _CGLContextObject {};

CGLContextObj CGLGetCurrentContext() {
    static _CGLContextObject context;
    return macStandIns.hasContext ? &context : nullptr;
}

CGLError CGLSetParameter(CGLContextObj context, CGLContextParameter parameter, const GLint* value) {
    if (!context || parameter != kCGLCPSwapInterval)
        return kCGLBadContext;
    macStandIns.swapInterval = *value;
    return kCGLNoError;
}

CGLError CGLGetParameter(CGLContextObj context, CGLContextParameter parameter, GLint* value) {
    if (!context || parameter != kCGLCPSwapInterval)
        return kCGLBadContext;
    *value = macStandIns.swapInterval;
    return kCGLNoError;
}
