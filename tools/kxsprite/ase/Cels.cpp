#include "Chunks.h"

#include <zlib.h>

#include <algorithm>
#include <optional>

namespace {
constexpr int raw = 0, linked = 1, compressed = 2, compressedTilemap = 3;
constexpr std::uint64_t mostInflated = 1032; // times what is packed: zlib cannot do more

/// Unpacks exactly so many bytes; what comes behind them is left.
std::string inflated(AseBytes& chunk, std::size_t size) {
    const AseBytes place = chunk;
    const std::string_view packed = chunk.rest();
    std::string bytes(size, '\0');
    z_stream stream = {};
    if (inflateInit(&stream) != Z_OK)
        throw std::bad_alloc();
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data())); // which is only read
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(size);
    const int status = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    if (status == Z_MEM_ERROR)
        throw std::bad_alloc();
    if (status == Z_DATA_ERROR || status == Z_NEED_DICT)
        place.fail("the pixels' stream is damaged");
    if (stream.avail_out)
        place.fail("the pixels' stream ends " + std::to_string(stream.avail_out) + " bytes too early");
    return bytes;
}

AsePicture readPicture(AseBytes& chunk, bool isPacked, int bytesPerPixel, AseBudget& budget) {
    AsePicture picture;
    picture.width = chunk.u16();
    picture.height = chunk.u16();
    const std::uint64_t size = std::uint64_t(picture.width) * static_cast<std::uint64_t>(picture.height) *
                               static_cast<std::uint64_t>(bytesPerPixel);
    if (size > (isPacked ? mostInflated : 1) * chunk.left())
        chunk.fail("a cel of " + std::to_string(picture.width) + " x " + std::to_string(picture.height) +
                   " pixels is claimed, which the " + std::to_string(chunk.left()) +
                   " bytes left cannot hold");
    budget.take(size, chunk);
    picture.pixels = isPacked && size ? inflated(chunk, size) : std::string(chunk.take(isPacked ? 0 : size));
    return picture;
}

std::optional<std::size_t> linkedPicture(AseBytes& chunk, const AseSprite& sprite, int layer) {
    const std::size_t frame = chunk.u16();
    if (frame + 1 >= sprite.frames.size())
        chunk.fail("the cel is linked to frame " + std::to_string(frame) + ", which does not come before it");
    const std::vector<AseCel>& cels = sprite.frames[frame].cels;
    const auto cel = std::ranges::lower_bound(cels, layer, {}, &AseCel::layer);
    if (cel == cels.end() || cel->layer != layer)
        return std::nullopt;
    return cel->picture;
}

/// The number of the picture that a cel shows; none if there is nothing to be seen.
std::optional<std::size_t> pictureOf(AseBytes& chunk, int type, int layer, AseSprite& sprite,
                                     AseBudget& budget) {
    if (type == linked)
        return linkedPicture(chunk, sprite, layer);
    if (type != raw && type != compressed)
        return std::nullopt;
    AsePicture picture = readPicture(chunk, type == compressed, sprite.bytesPerPixel, budget);
    if (picture.pixels.empty())
        return std::nullopt;
    sprite.pictures.push_back(std::move(picture));
    return sprite.pictures.size() - 1;
}
} // namespace

void AseBudget::take(std::uint64_t bytes, const AseBytes& at) {
    if (bytes > _left)
        at.fail("the file unpacks to more than 1 GiB");
    _left -= bytes;
}

void readCel(AseBytes& chunk, AseSprite& sprite, AseBudget& budget) {
    AseCel cel;
    cel.layer = chunk.u16();
    cel.x = chunk.i16();
    cel.y = chunk.i16();
    cel.opacity = chunk.u8();
    const int type = chunk.u16();
    cel.z = chunk.i16();
    chunk.skip(5);
    if (cel.layer >= static_cast<int>(sprite.layers.size()))
        return;
    const AseLayer& layer = sprite.layers[static_cast<std::size_t>(cel.layer)];
    using Kind = AseLayer::Kind;
    if (!layer.isShown || layer.kind == Kind::Group || layer.kind == Kind::Unknown)
        return;
    if (layer.kind == Kind::Tilemap || type == compressedTilemap)
        chunk.fail("layer " + quoted(layer.name) +
                   " is a tile map, which cannot be read; convert it to a layer of pixels (Layer, Convert "
                   "To), or hide it");
    if (const auto picture = pictureOf(chunk, type, cel.layer, sprite, budget)) {
        cel.picture = *picture;
        sprite.frames.back().cels.push_back(cel);
    }
}

void finishCels(const AseBytes& frame, AseSprite& sprite) {
    std::vector<AseCel>& cels = sprite.frames.back().cels;
    std::ranges::stable_sort(cels, {}, &AseCel::layer);
    const auto twin = std::ranges::adjacent_find(cels, {}, &AseCel::layer);
    if (twin != cels.end())
        frame.fail("layer " + std::to_string(twin->layer) + " has two cels in this frame");
}
