#include "Chunks.h"

// Tags and slices: what has a name and is not seen.

namespace {
constexpr std::size_t smallestTag = 19, smallestSlice = 14, smallestKey = 20;
enum SliceFlag : unsigned { Centre = 1, Pivot = 2 };

TagDirection directionOf(int number) {
    return number >= 1 && number <= 3 ? static_cast<TagDirection>(number) : TagDirection::Forward;
}

Tag readTag(AseBytes& chunk, int frames) {
    const AseBytes begin = chunk;
    Tag tag;
    tag.from = chunk.u16();
    tag.to = chunk.u16();
    tag.direction = directionOf(chunk.u8());
    tag.repeats = chunk.u16();
    chunk.skip(10);
    tag.name = chunk.text();
    if (tag.from > tag.to || tag.to >= frames)
        begin.fail("tag " + quoted(tag.name) + " covers the frames " + std::to_string(tag.from) + " to " +
                   std::to_string(tag.to) + ", but there are " + std::to_string(frames));
    return tag;
}
} // namespace

void readTags(AseBytes& chunk, int frames, AseSprite& sprite) {
    const int count = chunk.u16();
    chunk.skip(8);
    chunk.expect(static_cast<std::size_t>(count), smallestTag, "tags");
    for (int i = 0; i < count; ++i)
        sprite.tags.push_back(readTag(chunk, frames));
}

void readSlice(AseBytes& chunk, AseSprite& sprite) {
    const std::uint32_t count = chunk.u32(), flags = chunk.u32();
    chunk.skip(4);
    AseSlice slice = {chunk.text(), {}, (flags & Centre) != 0, (flags & Pivot) != 0};
    chunk.expect(count, smallestKey, "keys of a slice");
    for (std::uint32_t i = 0; i < count; ++i) {
        AseSlice::Key key = {};
        key.frame = chunk.u32();
        key.x = chunk.i32();
        key.y = chunk.i32();
        key.width = chunk.u32();
        key.height = chunk.u32();
        chunk.skip((slice.hasCentre ? 16 : 0) + (slice.hasPivot ? 8 : 0));
        slice.keys.push_back(key);
    }
    sprite.slices.push_back(std::move(slice));
}

void readSlices(AseBytes& chunk, AseSprite& sprite) {
    const std::uint32_t count = chunk.u32();
    chunk.skip(8);
    chunk.expect(count, smallestSlice, "slices");
    for (std::uint32_t i = 0; i < count; ++i)
        readSlice(chunk, sprite);
}
