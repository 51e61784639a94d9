// What is seen of a map.

#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "map/MapModel.h"

#include <Kobaltrix/KXDrawBatch.h>

#include <algorithm>
#include <cmath>

KXTexture* _KXMapPicture::loaded() {
    if (wasTried || path.empty())
        return texture.get();
    wasTried = true;
    KXImage image;
    if (!image.load(path.c_str()))
        return nullptr;
    if (const KXPixel key = KXPixelOf(transparent); key.a)
        for (int i = 0; i < image.width() * image.height(); ++i)
            if (KXPixel& pixel = image.row(0)[i]; pixel.r == key.r && pixel.g == key.g && pixel.b == key.b)
                pixel.a = 0;
    texture = std::make_unique<KXTexture>(image);
    if (!(texture->size().width > 0))
        texture.reset();
    return texture.get();
}

int _KXTileInfo::idAt(int id, double milliseconds) const {
    double whole = 0;
    for (const Frame& frame : animation)
        whole += frame.milliseconds;
    if (!(whole > 0))
        return animation.empty() ? id : animation.front().id;
    double left = std::fmod(milliseconds, whole);
    for (const Frame& frame : animation) {
        left -= frame.milliseconds;
        if (left < 0)
            return frame.id;
    }
    return animation.back().id;
}

KXSize _KXTileset::reach() const {
    float side = std::max(tileSize.width, tileSize.height);
    for (const auto& [id, tile] : tiles) // of a collection
        side = std::max({side, tile.size.width, tile.size.height});
    return {side + std::fabs(offset.x), side + std::fabs(offset.y)};
}

namespace {
class Painter {
public:
    Painter(_KXMapState& map, const KXRect& part, KXPoint position)
        : _map(map), _part(part), _position(position) {}

    void draw(int layer);

private:
    void drawTiles(const _KXTileGrid& grid);
    void drawObjects(const _KXMapLayerData& data);
    void drawImage(_KXMapLayerData& data);
    /// @param box where it stands: its bottom left counts, unless it is stretched to the box.
    void drawTile(const KXTile& tile, const KXRect& box, bool isStretched, float rotation, KXPoint pivot);

    _KXMapState& _map;
    const KXRect _part;
    const KXPoint _position;
    KXPoint _shift = {0, 0}; // from the map to the target
    KXColor _tint = {1, 1, 1, 1};
};

void Painter::draw(int layer) {
    const auto index = static_cast<std::size_t>(layer);
    const KXMapLayer& seen = _map.layers[index];
    const KXPoint away = KXRectCentre(_part) - _map.parallaxOrigin;
    _shift = _position - _part.origin + seen.offset +
             KXPoint{away.x * (1 - seen.parallax.x), away.y * (1 - seen.parallax.y)};
    _tint = {seen.tint.r, seen.tint.g, seen.tint.b, seen.opacity};
    if (seen.kind == KXMapLayerTiles)
        drawTiles(_map.data[index].grid);
    else if (seen.kind == KXMapLayerObjects)
        drawObjects(_map.data[index]);
    else
        drawImage(_map.data[index]);
}

void Painter::drawTiles(const _KXTileGrid& grid) {
    const auto [width, height] = _map.tileSize;
    const double wide = _map.reach.width, high = _map.reach.height;
    const KXPoint corner = _part.origin + (_position - _part.origin - _shift); // in the layer's own pixels
    constexpr int most = 16384;
    const auto cell = [](double at, double side) { return _KXTruncate(std::floor(at / side)); };
    const int left = std::max(cell(corner.x - wide, width), grid.left);
    const int top = std::max(cell(corner.y - high, height), grid.top);
    const auto end = [](int start, int last, int edge) {
        return static_cast<int>(std::min({static_cast<long long>(last) + 1, static_cast<long long>(edge),
                                          static_cast<long long>(start) + most}));
    };
    const int right = end(left, cell(double{corner.x} + _part.size.width + wide, width), grid.right);
    const int bottom = end(top, cell(double{corner.y} + _part.size.height + high, height), grid.bottom);
    // Where no tile reaches into another's cell their order is free: then set by set, in a draw call each.
    const int sets = static_cast<int>(_map.tilesets.size());
    const bool isFree = wide <= width && high <= height;
    for (int set = 0, next = sets; set < sets; set = next, next = sets) {
        for (int i = top; i < bottom; ++i) {
            const int row = _map.drawsFromBottom ? bottom - 1 - (i - top) : i;
            for (int j = left; j < right; ++j) {
                const int column = _map.drawsFromRight ? right - 1 - (j - left) : j;
                const KXTile tile = _map.tileOf(grid.at(column, row));
                if (isFree && tile.tileset > set)
                    next = std::min(next, tile.tileset);
                if (tile.tileset < 0 || (isFree && tile.tileset != set))
                    continue;
                const KXRect box = {{static_cast<float>(column) * width, static_cast<float>(row) * height},
                                    {width, height}};
                drawTile(tile, box, false, 0, box.origin);
            }
        }
    }
}

void Painter::drawObjects(const _KXMapLayerData& data) {
    const KXPoint offset = _map.layers[static_cast<std::size_t>(&data - _map.data.data())].offset;
    for (int i = data.firstObject; i < data.firstObject + data.objectCount; ++i) {
        const KXMapObject& object = _map.objects[static_cast<std::size_t>(i)];
        if (object.tile.tileset >= 0 && object.visible) // its place has the layer's offset in it already
            drawTile(object.tile, KXMovedRect(object.rect, -offset), true, object.rotation,
                     object.pivot - offset);
    }
}

void Painter::drawImage(_KXMapLayerData& data) {
    KXTexture* const texture = data.picture.loaded();
    if (!texture)
        return;
    KXDrawOptions options;
    options.tint = _tint;
    options.position = _shift;
    // One draw covers all that is seen: the picture goes on beyond its edges.
    const KXSize size = texture->size();
    options.source = {{0, 0}, size};
    if (const KXWrap wrap = data.repeatsX || data.repeatsY ? KXWrapRepeat : KXWrapClamp;
        texture->wrap() != wrap)
        texture->setWrap(wrap); // a change lets the batch out
    if (data.repeatsX) {
        options.source.origin.x = std::fmod(_position.x - _shift.x, size.width);
        options.source.size.width = _part.size.width;
        options.position.x = _position.x;
    }
    if (data.repeatsY) {
        options.source.origin.y = std::fmod(_position.y - _shift.y, size.height);
        options.source.size.height = _part.size.height;
        options.position.y = _position.y;
    }
    texture->draw(options);
}

void Painter::drawTile(const KXTile& tile, const KXRect& box, bool isStretched, float rotation,
                       KXPoint pivot) {
    _KXTileset& set = _map.tilesets[static_cast<std::size_t>(tile.tileset)];
    const _KXTileInfo* const info = set.infoOf(tile.id);
    const int id = info ? info->idAt(tile.id, _map.milliseconds) : tile.id;
    if (!set.has(id))
        return;
    KXDrawOptions options;
    KXTexture* texture = nullptr;
    if (set.isCollection()) {
        _KXTileInfo& shown = set.tiles.at(id);
        texture = shown.picture.loaded();
        options.source = shown.part;
    } else {
        texture = set.picture.loaded();
        const auto step = [&set](float side) { return side + static_cast<float>(set.spacing); };
        options.source = {
            {static_cast<float>(set.margin) + static_cast<float>(id % set.columns) * step(set.tileSize.width),
             static_cast<float>(set.margin) +
                 static_cast<float>(id / set.columns) * step(set.tileSize.height)},
            set.tileSize};
    }
    if (!texture)
        return;
    KXSize part = options.source.size;
    if (part.width < 0)
        part = texture->size();
    const bool isTurned = tile.flips & KXTileFlipDiagonal;
    KXSize size = isTurned ? KXSize{part.height, part.width} : part;
    if (isStretched || set.fillsGrid) {
        const KXSize scale = {box.size.width / size.width, box.size.height / size.height};
        const float least = std::min(scale.width, scale.height);
        size = set.keepsAspect ? size * least : box.size;
    }
    KXRect place = {{box.origin.x, box.origin.y + box.size.height - size.height}, size};
    if (isStretched || set.fillsGrid)
        place = KXRectAround(KXRectCentre(box), size);
    const KXPoint middle = KXRectCentre(place) + set.offset;
    options.size = isTurned ? KXSize{size.height, size.width} : size;
    options.origin = {part.width / 2, part.height / 2};
    options.position = pivot + KXTurned(middle - pivot, rotation) + _shift;
    // The order of the flips in turns and mirror images about the middle.
    struct Turn {
        KXFlip flip;
        float degrees;
    };
    constexpr Turn turns[] = {{KXFlipNone, 0},   {KXFlipLeftRight, 0}, {KXFlipTopBottom, 0},
                              {KXFlipNone, 180}, {KXFlipDiagonal, 0},  {KXFlipNone, 90},
                              {KXFlipNone, 270}, {KXFlipDiagonal, 180}};
    const Turn& turn = turns[tile.flips & 7];
    options.flip = turn.flip;
    options.rotation = turn.degrees + rotation;
    options.tint = _tint;
    texture->draw(options);
}
} // namespace

int KXMap::loadPictures() {
    int result = -1;
    if (!_state)
        return result;
    const auto load = [&result](_KXMapPicture& picture) {
        picture.wasTried = picture.texture != nullptr;
        if (!picture.path.empty() && !picture.loaded())
            result = 0;
    };
    for (_KXTileset& set : _state->tilesets) {
        load(set.picture);
        for (auto& tile : set.tiles)
            load(tile.second.picture);
    }
    for (_KXMapLayerData& data : _state->data)
        load(data.picture);
    return result;
}

void KXMap::draw(KXRect part, KXPoint position) {
    KXBeginDrawBatch();
    for (std::size_t i = 0; i < layers().size(); ++i)
        if (layers()[i].visible)
            drawLayer(static_cast<int>(i), part, position);
    KXEndDrawBatch();
}

void KXMap::drawLayer(int layer, KXRect part, KXPoint position) {
    const KXPoint end = KXRectEnd(part);
    const bool isFinite =
        std::isfinite(part.origin.x + part.origin.y + end.x + end.y + position.x + position.y);
    if (!isFinite || layer < 0 || layer >= static_cast<int>(layers().size()))
        return;
    KXBeginDrawBatch();
    Painter(*_state, part, position).draw(layer);
    KXEndDrawBatch();
}
