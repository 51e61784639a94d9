// Files that may be pictures, of little size however much they claim.

#include "Fuzz.h"

#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include <new>

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    KXSetMaximumImagePixels(1 << 20);
    constexpr const char* extensions[] = {"", ".png", ".bmp", ".tga", ".gif", ".jpg"};
    const char* const extension = extensions[bytes.byte() % 6];
    try {
        KXTexture texture(fuzzFile(bytes.rest(), extension));
        require(texture.size().width * texture.size().height <= 1 << 20, "no picture is too large");
        texture.draw(0, 0, 0);
    } catch (const std::bad_alloc&) {
    }
}
