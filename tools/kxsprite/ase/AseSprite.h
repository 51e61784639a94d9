#pragma once

#include "../Tags.h"

#include <Kobaltrix/KXImage.h>

#include <compare>
#include <string_view>

/// A layer of an .aseprite file.
struct AseLayer {
    enum class Kind { Image, Group, Tilemap, Unknown };

    std::string name;
    Kind kind = Kind::Image;
    int parent = -1;           ///< The group that it is in; -1 for none.
    int level = 0;             ///< In how many groups it is.
    int place = 0;             ///< Among the layers of its group, from the back to the front.
    int next = -1;             ///< The layer in front of it in its group; -1 for none.
    bool isShown = true;       ///< It and all groups that it is in are visible, and it is no reference.
    bool isBackground = false; ///< It lies below all others.
    int blendMode = 0;         ///< By its number in the file; see Blend.h.
    std::uint8_t opacity = 255;
};

/// The picture of one cel or more, in the file's own form of pixels.
struct AsePicture {
    int width = 0, height = 0;
    std::string pixels;
};

/// What one layer shows in one frame.
struct AseCel {
    int layer = 0;
    int x = 0, y = 0; ///< Of the picture's corner on the canvas; it may reach beyond.
    std::uint8_t opacity = 255;
    int z = 0; ///< By how many layers it is moved to the front.
    std::size_t picture = 0;

    auto operator<=>(const AseCel&) const = default;
};

struct AseFrame {
    int milliseconds = 0;
    std::vector<AseCel> cels; ///< Of layers that are shown, in their order.
    std::size_t palette = 0;
};

/// A named rectangle that may change from frame to frame.
struct AseSlice {
    struct Key {
        std::uint32_t frame; ///< From which on it is there.
        std::int32_t x, y;
        std::uint32_t width, height; ///< 0 hides it.
    };

    std::string name;
    std::vector<Key> keys;
    bool hasCentre = false, hasPivot = false;
};

using AsePalette = std::vector<KXPixel>;

/// What an .aseprite file says, as far as it is seen.
struct AseSprite {
    int width = 0, height = 0; ///< Of the canvas.
    int bytesPerPixel = 4;     ///< 4 for colours, 2 for gray, 1 for indices in a palette.
    int transparentIndex = 0;
    bool composesGroups = false; ///< Groups are pictures of their own that are blended.
    std::vector<AseLayer> layers;
    std::vector<AsePicture> pictures;
    std::vector<AsePalette> palettes; ///< Of sprites with indices.
    std::vector<AseFrame> frames;
    std::vector<Tag> tags; ///< Each within the frames.
    std::vector<AseSlice> slices;
};

/// Reads the bytes of an .aseprite or .ase file, believing none of their counts and sizes. Throws a Fault
/// with the frame, the chunk and the byte; and for tile maps that would be seen.
AseSprite readAseprite(std::string_view bytes);

/// Whether bytes begin as an .aseprite file does.
bool isAseprite(std::string_view bytes);

/// The picture of one frame, as large as the canvas; what is transparent is transparent black.
/// @param frame from 0, within the sprite. Throws a Fault if there may be no image so large.
KXImage composeFrame(const AseSprite& sprite, std::size_t frame);

/// About how many pixels have to be looked at to compose a frame: little in a file may ask for very much.
std::uint64_t composingCost(const AseSprite& sprite, std::size_t frame);
