#include "map/MapReader.h"

#include "platform/FilePath.h"

#include <algorithm>
#include <filesystem>

namespace {
// What a group hands down to the layers in it.
struct Inherited {
    int visible = -1;
    float opacity = 1;
    KXPoint offset = {0, 0}, parallax = {1, 1};
    KXColor tint = {1, 1, 1, 1};
};

class Reader {
public:
    Reader(const std::string& file, std::uint32_t mostCells, _KXMapState& map)
        : _file(file), _cellsLeft(mostCells), _map(map) {}

    void read(const _KXJsonValue& root);

private:
    void readLayers(const _KXJsonValue& owner, const Inherited& group, int depth);
    void readLayer(const _KXJsonValue& value, const std::string& type, const Inherited& own);
    Inherited inherited(const _KXJsonValue& value, const Inherited& group) const;

    const std::string& _file;
    std::int64_t _cellsLeft;
    bool _isInfinite = false;
    _KXMapState& _map;
};

void Reader::read(const _KXJsonValue& root) {
    if (root.text("type", "map") != "map")
        root.member("type").fail("is no map");
    if (root.text("orientation", "orthogonal") != "orthogonal")
        root.member("orientation").fail("only orthogonal maps can be loaded");
    const std::string order = root.text("renderorder", "right-down");
    if (order != "right-down" && order != "right-up" && order != "left-down" && order != "left-up")
        root.member("renderorder").fail("is unknown");
    _map.drawsFromRight = order.starts_with("left");
    _map.drawsFromBottom = order.ends_with("up");
    const auto side = [&root](const char* key, int least) {
        return static_cast<float>(root.member(key).whole(least, _KXTileGrid::farthest));
    };
    _map.size = {side("width", 0), side("height", 0)};
    _map.tileSize = {side("tilewidth", 1), side("tileheight", 1)};
    _map.background = root.color("backgroundcolor", {0, 0, 0, 0});
    _map.parallaxOrigin = {root.number("parallaxoriginx", 0), root.number("parallaxoriginy", 0)};
    _map.properties = _KXReadMapProperties(root);
    _isInfinite = root.flag("infinite", false);
    for (const _KXJsonValue& value : root.elements("tilesets")) {
        _map.tilesets.push_back(_KXReadTileset(value, _file));
        const KXSize reach = _map.tilesets.back().reach();
        _map.reach = {std::max(_map.reach.width, reach.width), std::max(_map.reach.height, reach.height)};
        const std::size_t count = _map.tilesets.size();
        if (count > 1 && _map.tilesets[count - 2].firstNumber >= _map.tilesets.back().firstNumber)
            value.member("firstgid").fail("must be greater than the one before");
    }
    readLayers(root, {}, 0);
}

Inherited Reader::inherited(const _KXJsonValue& value, const Inherited& group) const {
    Inherited own = group;
    const KXColor tint = value.color("tintcolor", {1, 1, 1, 1});
    own.visible = group.visible && value.flag("visible", true) ? -1 : 0;
    own.opacity *= std::min(std::max(value.number("opacity", 1), 0.0f), 1.0f) * tint.a;
    own.offset += KXPoint{value.number("offsetx", 0), value.number("offsety", 0)};
    own.parallax = {group.parallax.x * value.number("parallaxx", 1),
                    group.parallax.y * value.number("parallaxy", 1)};
    own.tint = {group.tint.r * tint.r, group.tint.g * tint.g, group.tint.b * tint.b, 1};
    return own;
}

void Reader::readLayers(const _KXJsonValue& owner, const Inherited& group, int depth) {
    constexpr int deepest = 64;
    if (depth > deepest)
        throw _KXJsonFault{_file + ": layers lie in too many groups"};
    for (const _KXJsonValue& element : owner.elements("layers")) {
        const _KXJsonValue value = element.named();
        const std::string type = value.member("type").text();
        const Inherited own = inherited(value, group);
        if (type == "group")
            readLayers(value, own, depth + 1);
        else
            readLayer(value, type, own);
    }
}

void Reader::readLayer(const _KXJsonValue& value, const std::string& type, const Inherited& own) {
    const auto index = static_cast<int>(_map.layers.size());
    KXMapLayer layer = {value.text("name"), KXMapLayerTiles, own.visible, own.opacity,
                        own.offset,         own.parallax,    own.tint,    _KXReadMapProperties(value)};
    _KXMapLayerData data;
    if (type == "tilelayer") {
        _KXReadTiles(value, _isInfinite, _cellsLeft, data.grid);
    } else if (type == "objectgroup") {
        layer.kind = KXMapLayerObjects;
        data.firstObject = static_cast<int>(_map.objects.size());
        _map.layers.push_back(layer);
        _KXReadObjects(value, index, _map);
        _map.layers.pop_back();
        data.objectCount = static_cast<int>(_map.objects.size()) - data.firstObject;
    } else if (type == "imagelayer") {
        layer.kind = KXMapLayerImage;
        const std::string image = value.text("image");
        data.picture.path = image.empty() ? "" : _KXMapPathBeside(_file, image);
        data.picture.transparent = value.color("transparentcolor", {0, 0, 0, 0});
        data.repeatsX = value.flag("repeatx", false);
        data.repeatsY = value.flag("repeaty", false);
    } else {
        value.member("type").fail("is unknown");
    }
    _map.layers.push_back(std::move(layer));
    _map.data.push_back(std::move(data));
}
} // namespace

std::string _KXMapPathBeside(const std::string& file, const std::string& path) {
    return _KXTextOf((_KXPlainPath(file).parent_path() / _KXPlainPath(path)).lexically_normal());
}

void _KXReadMap(const std::string& path, std::uint32_t mostCells, _KXMapState& map) {
    const _KXJsonDocument document(path);
    Reader(path, mostCells, map).read(document.root());
}
