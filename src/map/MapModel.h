#pragma once

#include <Kobaltrix/KXMap.h>
#include <Kobaltrix/KXTexture.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// The cells of a layer, in blocks: where a block is empty there is none.
class _KXTileGrid {
public:
    static constexpr int side = 32, farthest = 1 << 24;
    using Cells = std::array<std::uint32_t, side * side>;

    /// The tile's global number with its flips, as the editor writes it; 0 for none.
    std::uint32_t at(int column, int row) const {
        const Cells* const block = blockAt(column >> 5, row >> 5);
        return block ? (*block)[indexOf(column, row)] : 0;
    }
    void set(int column, int row, std::uint32_t cell);
    /// What the blocks cover, from the first to behind the last cell.
    int left = 0, top = 0, right = 0, bottom = 0;

private:
    /// A block of cells, counted in blocks; null if it is empty.
    const Cells* blockAt(int x, int y) const {
        const auto found = _blocks.find(keyOf(x, y));
        return found == _blocks.end() ? nullptr : found->second.get();
    }
    static std::size_t indexOf(int column, int row) {
        return static_cast<std::size_t>((row & (side - 1)) * side + (column & (side - 1)));
    }
    static std::uint64_t keyOf(int x, int y) {
        return std::uint64_t{static_cast<std::uint32_t>(x)} << 32 | static_cast<std::uint32_t>(y);
    }
    std::unordered_map<std::uint64_t, std::unique_ptr<Cells>> _blocks;
};

/// A picture, loaded when it is first drawn.
struct _KXMapPicture {
    std::string path; ///< Empty for none.
    KXColor transparent = {0, 0, 0, 0};
    std::unique_ptr<KXTexture> texture = nullptr;
    bool wasTried = false;

    /// Null if it cannot be loaded; the error slot says why once.
    KXTexture* loaded();
};

/// What was said of a tile.
struct _KXTileInfo {
    std::string type = {};
    KXMapProperties properties = {};
    struct Frame {
        int id;
        int milliseconds;
    };
    std::vector<Frame> animation = {};
    _KXMapPicture picture = {}; ///< Of a collection.
    KXRect part = {{0, 0}, {-1, -1}};
    KXSize size = {0, 0}; ///< Of the picture, as the file says.

    /// The tile to show after some time.
    int idAt(int id, double milliseconds) const;
};

struct _KXTileset {
    std::uint32_t firstNumber = 1;
    int count = 0, columns = 0, margin = 0, spacing = 0;
    KXSize tileSize = {0, 0};
    KXPoint offset = {0, 0};
    KXPoint alignment = {0, 1}; ///< Where an object's own point lies in it, from 0 to 1.
    bool fillsGrid = false, keepsAspect = false;
    _KXMapPicture picture = {};
    std::map<int, _KXTileInfo> tiles = {};

    bool isCollection() const { return picture.path.empty(); }
    bool has(int id) const { return id >= 0 && (isCollection() ? tiles.count(id) > 0 : id < count); }
    const _KXTileInfo* infoOf(int id) const {
        const auto found = tiles.find(id);
        return found == tiles.end() ? nullptr : &found->second;
    }
    /// How far its tiles reach up and to the right of their cells, however they are turned.
    KXSize reach() const;
};

/// What belongs to a layer beside what a game sees of it.
struct _KXMapLayerData {
    _KXTileGrid grid = {};
    _KXMapPicture picture = {};
    bool repeatsX = false, repeatsY = false;
    int firstObject = 0, objectCount = 0;
};

struct _KXMapState {
    KXSize size = {0, 0}, tileSize = {1, 1};
    KXColor background = {0, 0, 0, 0};
    KXPoint parallaxOrigin = {0, 0};
    bool drawsFromRight = false, drawsFromBottom = false;
    KXMapProperties properties = {};
    std::vector<KXMapLayer> layers = {};
    std::vector<_KXMapLayerData> data = {}; ///< One for each layer.
    std::vector<_KXTileset> tilesets = {};
    KXSize reach = {0, 0}; ///< The largest of the sets.
    std::vector<KXMapObject> objects = {};
    double milliseconds = 0;

    /// The tile of a cell; none for what is in no set.
    KXTile tileOf(std::uint32_t cell) const;
    const _KXTileInfo* infoOf(const KXTile& tile) const;
    bool hasTiles(int layer) const {
        return layer >= 0 && layer < static_cast<int>(layers.size()) &&
               layers[static_cast<std::size_t>(layer)].kind == KXMapLayerTiles;
    }
};

/// Reads a map. Throws a _KXJsonFault.
void _KXReadMap(const std::string& path, std::uint32_t mostCells, _KXMapState& map);
