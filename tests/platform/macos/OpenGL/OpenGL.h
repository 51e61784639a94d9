#pragma once

extern "C" {
typedef int GLint;
typedef struct _CGLContextObject* CGLContextObj;
enum CGLError { kCGLNoError = 0, kCGLBadContext = 10004 };
enum CGLContextParameter { kCGLCPSwapInterval = 222 };

CGLContextObj CGLGetCurrentContext();
CGLError CGLSetParameter(CGLContextObj context, CGLContextParameter parameter, const GLint* value);
CGLError CGLGetParameter(CGLContextObj context, CGLContextParameter parameter, GLint* value);
}
