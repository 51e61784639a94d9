// The cells of a layer, in all the ways that files have them.

#include "map/MapReader.h"
#include "map/TileData.h"

namespace {
class TileReader {
public:
    TileReader(const _KXJsonValue& layer, std::int64_t& left, _KXTileGrid& grid)
        : _encoding(layer.text("encoding", "csv")), _compression(layer.text("compression")), _left(left),
          _grid(grid) {
        if (_encoding != "csv" && _encoding != "base64")
            layer.member("encoding").fail("is unknown");
        if (_encoding == "base64" && !_KXUnpackTiles(_compression, ""))
            layer.member("compression").fail("is unknown");
    }

    /// @param owner the layer, or a piece of an infinite one.
    void read(const _KXJsonValue& owner, int x, int y) {
        const auto side = [&owner](const char* key) {
            return static_cast<int>(owner.member(key).whole(0, _KXTileGrid::farthest));
        };
        const int width = side("width"), height = side("height");
        _left -= std::int64_t{width} * height;
        if (_left < 0)
            owner.fail("there are more cells than a map may have");
        const _KXJsonValue data = owner.member("data");
        if (_encoding == "csv")
            return readNumbers(data, x, y, width, height);
        std::string bytes;
        if (!_KXDecodeBase64(data.text(), bytes))
            data.fail("is no base64");
        readBytes(data, *_KXUnpackTiles(_compression, bytes), x, y, width, height);
    }

private:
    void readNumbers(const _KXJsonValue& data, int x, int y, int width, int height) {
        const auto cells = data.cells(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        for (int i = 0; i < std::ssize(cells); ++i)
            if (const std::uint32_t cell = cells[static_cast<std::size_t>(i)]) // all are empty at the start
                _grid.set(x + i % width, y + i / width, cell);
    }

    void readBytes(const _KXJsonValue& data, _KXTileBytes& bytes, int x, int y, int width, int height) {
        std::vector<unsigned char> row(static_cast<std::size_t>(width) * 4);
        for (int line = 0; line < height; ++line) {
            if (!bytes.read(row.data(), row.size()))
                data.fail("ends, or is broken, in row " + std::to_string(line) + " of " +
                          std::to_string(height));
            for (int i = 0; i < width; ++i) {
                const unsigned char* const cell = &row[static_cast<std::size_t>(i) * 4];
                if (const std::uint32_t number = cell[0] | std::uint32_t{cell[1]} << 8 |
                                                 std::uint32_t{cell[2]} << 16 | std::uint32_t{cell[3]} << 24)
                    _grid.set(x + i, y + line, number);
            }
        }
        if (!bytes.isAtEnd())
            data.fail("there are more bytes than cells, or its end is broken");
    }

    const std::string _encoding, _compression;
    std::int64_t& _left;
    _KXTileGrid& _grid;
};
} // namespace

void _KXReadTiles(const _KXJsonValue& layer, bool isInfinite, std::int64_t& left, _KXTileGrid& grid) {
    TileReader reader(layer, left, grid);
    if (!isInfinite)
        return reader.read(layer, 0, 0);
    const auto place = [](const _KXJsonValue& chunk, const char* key) {
        constexpr int most = _KXTileGrid::farthest;
        return static_cast<int>(chunk.member(key).whole(-most, most));
    };
    for (const _KXJsonValue& chunk : layer.elements("chunks"))
        reader.read(chunk, place(chunk, "x"), place(chunk, "y"));
}
