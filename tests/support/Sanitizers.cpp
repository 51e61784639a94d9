// Settings of the sanitized builds. The platform keeps some memory until the process ends; what is listed
// here is not ours to free.

#ifdef KOBALTRIX_SANITIZE

#include <cstdlib>

#define LEAKS_OF_THE_PLATFORM                                                                                \
    "leak:libEGL\n"                                                                                          \
    "leak:libGLX\n"                                                                                          \
    "leak:libGLdispatch\n"                                                                                   \
    "leak:_dri.so\n"                                                                                         \
    "leak:libgallium\n"                                                                                      \
    "leak:libLLVM\n"                                                                                         \
    "leak:libdbus\n"                                                                                         \
    "leak:libfontconfig\n"                                                                                   \
    "leak:libX11\n"                                                                                          \
    "leak:libwayland\n"                                                                                      \
    "leak:libdecor\n"                                                                                        \
    "leak:libxkbcommon\n"

extern "C" {
const char* __lsan_default_suppressions();
const char* __lsan_default_options();
int dlclose(void*);

const char* __lsan_default_suppressions() {
    // SDL's Wayland driver leaks a little at every start. Nothing finer can be named: the report ends inside
    // SDL.
    return std::getenv("WAYLAND_DISPLAY") ? LEAKS_OF_THE_PLATFORM "leak:libSDL2\n" : LEAKS_OF_THE_PLATFORM;
}

const char* __lsan_default_options() { return "print_suppressions=0"; }

// A driver that is unloaded before leaks are looked for could no longer be named in a report, nor in the
// list.
int dlclose(void*) { return 0; }
}

#endif
