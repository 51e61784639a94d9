#include "Palette.h"

#include <algorithm>
#include <utility>

namespace {
constexpr std::uint32_t mostColors = 65536, mostOldColors = 256;
constexpr KXPixel black = {0, 0, 0, 255};

KXPixel readColor(AseBytes& chunk) {
    const std::uint8_t red = chunk.u8(), green = chunk.u8(), blue = chunk.u8();
    return {red, green, blue, 255};
}

std::uint8_t widened(std::uint8_t value) {
    const int six = std::min<int>(value, 63);
    return static_cast<std::uint8_t>(six << 2 | six >> 4);
}
} // namespace

bool AsePaletteReader::takeChanged() { return std::exchange(_changed, false); }

void AsePaletteReader::readChunk(AseBytes& chunk) {
    const std::uint32_t size = chunk.u32(), first = chunk.u32(), last = chunk.u32();
    chunk.skip(8);
    if (size > mostColors || first > last || last >= size)
        chunk.fail("a palette of " + std::to_string(size) + " colours is given those from " +
                   std::to_string(first) + " to " + std::to_string(last));
    chunk.expect(last - first + 1, 6, "colours");
    _palette.resize(size, black);
    for (std::uint32_t i = first; i <= last; ++i) {
        const bool hasName = chunk.u16() & 1;
        _palette[i] = readColor(chunk);
        _palette[i].a = chunk.u8();
        if (hasName)
            chunk.skip(chunk.u16());
    }
    _isOfToday = _changed = true;
}

void AsePaletteReader::readOldChunk(AseBytes& chunk, int bits) {
    if (_isOfToday)
        return;
    std::uint32_t first = 0; // moved by what each packet skips, as the drawing program reads it
    for (int packets = chunk.u16(); packets > 0; --packets) {
        first += chunk.u8();
        const std::uint32_t claimed = chunk.u8(), count = claimed ? claimed : mostOldColors;
        if (first + count > mostOldColors)
            chunk.fail("an old palette has colours beyond the 256 that it can have");
        if (_palette.size() < first + count)
            _palette.resize(first + count, black);
        for (std::uint32_t i = first; i < first + count; ++i) {
            KXPixel color = readColor(chunk);
            if (bits == 6)
                color = {widened(color.r), widened(color.g), widened(color.b), 255};
            _palette[i] = color;
        }
    }
    _changed = true;
}
