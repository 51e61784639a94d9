#include "support/RefusedCalls.h"

#include "render/GLFunctions.h"
#include "support/Allocations.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <type_traits>
#include <utility>

#include <FTGL/ftgl.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <unistd.h>

static constinit bool driverIsOutOfMemory = false;

// Whether the call that is made now is the one to refuse. The driver's own calls are granted.
static bool isRefused(const char* name, void* caller) {
    if (callsUntilRefusal < 0)
        return false;
    const std::string_view file = libraryOf(caller);
    constexpr std::string_view hindered[] = {"libSDL2", "libfreetype", "libftgl", "libstdc++"};
    const bool isHindered = file.empty() || std::ranges::any_of(hindered, [file](auto who) {
                                return file.find(who) != file.npos;
                            });
    if (!isHindered || --callsUntilRefusal >= 0)
        return false;
    refusedCall = name;
    return true;
}

// What is not in its buffer cannot be read from now on.
static void failReading(FILE* stream) {
    const int unreadable = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(unreadable, fileno(stream));
    close(unreadable);
}

#define REAL(name) reinterpret_cast<decltype(&instead_of_##name)>(dlsym(RTLD_NEXT, #name))

// A function of the system stands here under its own name, for the program and all libraries. None has more
// arguments than are passed in registers, so all go on as they came.
#define INSTEAD_OF(name, refusal)                                                                            \
    extern "C" long instead_of_##name(long, long, long, long, long, long) asm(#name);                        \
    long instead_of_##name(long a, long b, long c, long d, long e, long f) {                                 \
        static const auto real = REAL(name);                                                                 \
        if (isRefused(#name, __builtin_return_address(0)))                                                   \
            refusal;                                                                                         \
        return real(a, b, c, d, e, f);                                                                       \
    }
#define FAILING(name, result, error) INSTEAD_OF(name, return (errno = error, result))

FAILING(open, -1, EMFILE)
FAILING(open64, -1, EMFILE)
FAILING(fopen, 0, EMFILE)
FAILING(fopen64, 0, EMFILE)
FAILING(fdopen, 0, ENOMEM)
FAILING(open_memstream, 0, ENOMEM)
FAILING(fstat, -1, EIO)
FAILING(fchmod, -1, EPERM)
FAILING(read, -1, EIO)
INSTEAD_OF(fread, failReading(reinterpret_cast<FILE*>(d)))
FAILING(write, -1, ENOSPC)
FAILING(fsync, -1, EIO)
FAILING(rename, -1, EIO)
FAILING(getaddrinfo, EAI_MEMORY, 0)
FAILING(socket, -1, EMFILE)
FAILING(bind, -1, EADDRINUSE)
FAILING(listen, -1, EADDRINUSE)
FAILING(accept, -1, EMFILE)
FAILING(connect, -1, ECONNREFUSED)
FAILING(poll, -1, EINTR)
FAILING(getsockopt, -1, ENOBUFS)
FAILING(send, -1, ECONNRESET)
FAILING(recv, -1, ECONNRESET)
FAILING(SDL_CreateWindow, 0, 0)
FAILING(SDL_GL_CreateContext, 0, 0)
FAILING(SDL_GL_MakeCurrent, -1, 0)
FAILING(FT_Set_Char_Size, FT_Err_Out_Of_Memory, 0)
FAILING(FT_Load_Glyph, FT_Err_Out_Of_Memory, 0)
FAILING(FT_Render_Glyph, FT_Err_Out_Of_Memory, 0)
INSTEAD_OF(glGenTextures, return driverIsOutOfMemory = true)

extern "C" void instead_of_glTexImage2D(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum,
                                        const void*) asm("glTexImage2D");
void instead_of_glTexImage2D(GLenum target, GLint level, GLint held, GLsizei width, GLsizei height,
                             GLint border, GLenum format, GLenum type, const void* pixels) {
    static const auto real = REAL(glTexImage2D);
    const bool isQuestion = target == GL_PROXY_TEXTURE_2D;
    if (!isQuestion && isRefused("glTexImage2D", __builtin_return_address(0)))
        driverIsOutOfMemory = true;
    else
        real(target, level, held, width, height, border, format, type, pixels);
}

extern "C" GLenum instead_of_glGetError() asm("glGetError");
GLenum instead_of_glGetError() {
    static const auto real = REAL(glGetError);
    const GLenum other = real();
    return std::exchange(driverIsOutOfMemory, false) ? GL_OUT_OF_MEMORY : other;
}

// What the library calls by a pointer.
template<auto member, class Result, class... Parameters>
static void makeRefusable(Result (*&function)(Parameters...)) {
    static constinit std::add_pointer_t<Result(Parameters...)> real = nullptr;
    real = function;
    function = [](Parameters... arguments) {
        if (!isRefused("the driver's", reinterpret_cast<void*>(&makeDriverRefusable)))
            return real(arguments...);
        driverIsOutOfMemory = true;
        return Result();
    };
}

void makeDriverRefusable() {
    makeRefusable<&_KXGLFunctions::checkFramebufferStatus>(_KXGL.checkFramebufferStatus);
    makeRefusable<&_KXGLFunctions::renderbufferStorage>(_KXGL.renderbufferStorage);
    makeRefusable<&_KXGLFunctions::getProgramiv>(_KXGL.getProgramiv);
    makeRefusable<&_KXGLFunctions::bufferData>(_KXGL.bufferData);
    makeRefusable<&_KXGLFunctions::mapBufferRange>(_KXGL.mapBufferRange);
    makeRefusable<&_KXGLFunctions::unmapBuffer>(_KXGL.unmapBuffer);
}
