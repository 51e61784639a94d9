#include <Kobaltrix/KXMap.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "map/MapModel.h"
#include "util/Json.h"
#include "util/Slide.h"

#include <atomic>
#include <cmath>
#include <new>

static constinit std::atomic<std::uint32_t> maximumCells = 1U << 27;
static constexpr std::uint32_t horizontal = 1U << 31, vertical = 1U << 30, diagonal = 1U << 29,
                               numberBits = (1U << 28) - 1;

void KXSetMaximumMapCells(std::uint32_t cells) { maximumCells = cells; }

const KXMapProperty* KXFindMapProperty(const KXMapProperties& properties, const char* name) {
    for (const KXMapProperty& property : properties)
        if (name && property.name == name)
            return &property;
    return nullptr;
}

void _KXTileGrid::set(int column, int row, std::uint32_t cell) {
    std::unique_ptr<Cells>* block = nullptr;
    if (cell)
        block = &_blocks[keyOf(column >> 5, row >> 5)];
    else if (const auto found = _blocks.find(keyOf(column >> 5, row >> 5)); found != _blocks.end())
        block = &found->second;
    if (!block)
        return;
    if (!*block) {
        *block = std::make_unique<Cells>();
        const bool isFirst = _blocks.size() == 1;
        const int x = column & -side, y = row & -side;
        left = isFirst ? x : std::min(left, x);
        top = isFirst ? y : std::min(top, y);
        right = isFirst ? x + side : std::max(right, x + side);
        bottom = isFirst ? y + side : std::max(bottom, y + side);
    }
    (**block)[indexOf(column, row)] = cell;
}

KXTile _KXMapState::tileOf(std::uint32_t cell) const {
    const std::uint32_t number = cell & numberBits;
    const auto behind = std::upper_bound(
        tilesets.begin(), tilesets.end(), number,
        [](std::uint32_t wanted, const _KXTileset& set) { return wanted < set.firstNumber; });
    if (number == 0 || behind == tilesets.begin())
        return {};
    const auto id = static_cast<int>(number - std::prev(behind)->firstNumber);
    if (!std::prev(behind)->has(id))
        return {};
    return {static_cast<int>(behind - tilesets.begin()) - 1, id,
            (cell & horizontal ? KXTileFlipHorizontal : 0) | (cell & vertical ? KXTileFlipVertical : 0) |
                (cell & diagonal ? KXTileFlipDiagonal : 0)};
}

const _KXTileInfo* _KXMapState::infoOf(const KXTile& tile) const {
    const bool isSet = tile.tileset >= 0 && tile.tileset < static_cast<int>(tilesets.size());
    return isSet ? tilesets[static_cast<std::size_t>(tile.tileset)].infoOf(tile.id) : nullptr;
}

KXMap::KXMap() : _state(std::make_unique<_KXMapState>()) {}

KXMap::KXMap(const char* path) : KXMap() {
    if (!load(path))
        throw std::bad_alloc();
}

KXMap::~KXMap() = default;

KXMap::KXMap(KXMap&& other) noexcept : _state(std::move(other._state)) {}

KXMap& KXMap::operator=(KXMap&& other) noexcept {
    if (this != &other)
        _state = std::move(other._state);
    return *this;
}

int KXMap::load(const char* path) {
    if (!path) {
        _KXReportError("Unable to load a map: no path");
        return 0;
    }
    auto loaded = std::make_unique<_KXMapState>();
    try {
        _KXReadMap(path, maximumCells, *loaded);
    } catch (const _KXJsonFault& fault) {
        _KXReportError("Unable to load a map: %s", fault.text.c_str());
        return 0;
    }
    _state = std::move(loaded);
    return -1;
}

// A map whose state was taken over is like an empty one.
static const KXMapProperties& noProperties() {
    static const KXMapProperties none;
    return none;
}

KXSize KXMap::size() const { return _state ? _state->size : KXZeroSize; }
KXSize KXMap::tileSize() const { return _state ? _state->tileSize : KXSize{1, 1}; }
KXColor KXMap::background() const { return _state ? _state->background : KXColor{0, 0, 0, 0}; }
const KXMapProperties& KXMap::properties() const { return _state ? _state->properties : noProperties(); }

const std::vector<KXMapLayer>& KXMap::layers() const {
    static const std::vector<KXMapLayer> none;
    return _state ? _state->layers : none;
}

int KXMap::layerNamed(const char* name) const {
    for (std::size_t i = 0; name && i < layers().size(); ++i)
        if (layers()[i].name == name)
            return static_cast<int>(i);
    return -1;
}

void KXMap::setLayerVisible(int layer, int visible) {
    if (layer >= 0 && layer < static_cast<int>(layers().size()))
        _state->layers[static_cast<std::size_t>(layer)].visible = visible ? -1 : 0;
}

KXTile KXMap::tileAt(int layer, int column, int row) const {
    if (!_state || !_state->hasTiles(layer))
        return {};
    return _state->tileOf(_state->data[static_cast<std::size_t>(layer)].grid.at(column, row));
}

KXTile KXMap::tileAt(int layer, KXPoint point) const {
    if (!_state || !_state->hasTiles(layer) || !std::isfinite(point.x) || !std::isfinite(point.y))
        return {};
    const KXPoint at = point - _state->layers[static_cast<std::size_t>(layer)].offset;
    return tileAt(layer, _KXTruncate(std::floor(double{at.x} / _state->tileSize.width)),
                  _KXTruncate(std::floor(double{at.y} / _state->tileSize.height)));
}

int KXMap::setTile(int layer, int column, int row, KXTile tile) {
    constexpr int most = _KXTileGrid::farthest;
    if (!_state || !_state->hasTiles(layer) || column < -most || column > most || row < -most || row > most ||
        tile.tileset >= static_cast<int>(_state->tilesets.size()))
        return 0;
    std::uint32_t cell = 0;
    if (tile.tileset >= 0) {
        const _KXTileset& set = _state->tilesets[static_cast<std::size_t>(tile.tileset)];
        if (!set.has(tile.id))
            return 0;
        cell = (set.firstNumber + static_cast<std::uint32_t>(tile.id)) |
               (tile.flips & KXTileFlipHorizontal ? horizontal : 0) |
               (tile.flips & KXTileFlipVertical ? vertical : 0) |
               (tile.flips & KXTileFlipDiagonal ? diagonal : 0);
    }
    _state->data[static_cast<std::size_t>(layer)].grid.set(column, row, cell);
    return -1;
}

const KXMapProperties& KXMap::tileProperties(KXTile tile) const {
    const _KXTileInfo* const info = _state ? _state->infoOf(tile) : nullptr;
    return info ? info->properties : noProperties();
}

const char* KXMap::tileType(KXTile tile) const {
    const _KXTileInfo* const info = _state ? _state->infoOf(tile) : nullptr;
    return info ? info->type.c_str() : "";
}

const std::vector<KXMapObject>& KXMap::objects() const {
    static const std::vector<KXMapObject> none;
    return _state ? _state->objects : none;
}

const KXMapObject* KXMap::objectNamed(const char* name) const {
    for (const KXMapObject& object : objects())
        if (name && object.name == name)
            return &object;
    return nullptr;
}

KXSlide KXMap::slide(KXRect moving, KXPoint by, int layer, const char* property) const {
    if (!_state || !_state->hasTiles(layer))
        return KXSlideRect(moving, by, nullptr, 0);
    const auto index = static_cast<std::size_t>(layer);
    const _KXTileGrid& grid = _state->data[index].grid;
    const KXPoint offset = _state->layers[index].offset;
    const float width = _state->tileSize.width, height = _state->tileSize.height;
    const auto isSolid = [this, property](const KXTile& tile) {
        if (tile.tileset < 0 || !property)
            return tile.tileset >= 0;
        const KXMapProperty* const found = KXFindMapProperty(tileProperties(tile), property);
        return found && found->type == KXMapPropertyFlag && found->number != 0;
    };
    return _KXSlideAmong(moving, by, [&](const KXRect& area, const auto& visit) {
        // One cell more on each side than rounding could hide.
        const auto cell = [](double at, double side, int more) {
            return _KXTruncate(std::floor(at / side)) + more;
        };
        const int left = std::max(cell(double{area.origin.x} - offset.x, width, -1), grid.left);
        const int top = std::max(cell(double{area.origin.y} - offset.y, height, -1), grid.top);
        const int right = static_cast<int>(std::min<long long>(
            cell(double{area.origin.x} + area.size.width - offset.x, width, 0) + 2LL, grid.right));
        const int bottom = static_cast<int>(std::min<long long>(
            cell(double{area.origin.y} + area.size.height - offset.y, height, 0) + 2LL, grid.bottom));
        for (int row = top; row < bottom; ++row)
            for (int column = left; column < right; ++column) {
                const std::uint32_t number = grid.at(column, row);
                if (number && isSolid(_state->tileOf(number)))
                    visit({{offset.x + static_cast<float>(column) * width,
                            offset.y + static_cast<float>(row) * height},
                           {width, height}});
            }
    });
}

void KXMap::advance(float milliseconds) {
    if (_state && milliseconds > 0 && std::isfinite(milliseconds))
        _state->milliseconds += milliseconds;
}
