// Files that may be pictures, of little size however much they claim.

#include "Fuzz.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include <new>

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    KXSetMaximumImagePixels(1 << 20);
    constexpr const char* extensions[] = {"", ".png", ".bmp", ".tga", ".gif", ".jpg"};
    const char* const extension = extensions[bytes.byte() % 6];
    const std::string content = bytes.rest();
    KXImage image;
    if (image.loadFromMemory(content.data(), content.size()))
        require(image.width() * image.height() <= 1 << 20, "no image is too large");
    else
        require(*KXError(), "an image that is refused says why");
    try {
        KXTexture texture(fuzzFile(content, extension));
        require(texture.size().width * texture.size().height <= 1 << 20, "no picture is too large");
        texture.draw(0, 0, 0);
    } catch (const std::bad_alloc&) {
    }
}
