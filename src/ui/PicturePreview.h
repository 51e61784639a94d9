#pragma once

#include <Kobaltrix/KXTexture.h>

#include <cstdint>
#include <memory>
#include <string>

/// A file's picture, small, for whom looks for it by eye. Files that are none, or that take too long, show
/// nothing.
class _KXPicturePreview {
public:
    /// Draws the picture of a file as large as it fits into a place, in its middle. It is loaded when its
    /// path is another one; none is the empty one. @param size of the file in bytes.
    void draw(const std::string& path, std::uint64_t size, KXRect place);

private:
    void load(std::uint64_t size, KXSize room);

    std::string _path;
    KXSize _room = {0, 0};
    unsigned _graphicsContext = 0;
    std::unique_ptr<KXTexture> _texture;
};
