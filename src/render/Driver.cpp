#include "render/Driver.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cctype>
#include <string>

_KXDriver _KXDriverNamed(const char* renderer) {
    std::string name = renderer ? renderer : "";
    std::ranges::transform(name, name.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    for (const char* known : {"llvmpipe", "softpipe", "swrast", "swr", "swiftshader", "lavapipe", "software",
                              "gdi generic", "basic render"})
        if (name.find(known) != std::string::npos)
            return _KXDriver::Software;
    return _KXDriver::Hardware;
}

void _KXDriverLoad::unload() {
    _load = 0;
    if (_KXCurrentDriver == _KXDriver::Software)
        glFlush();
}
