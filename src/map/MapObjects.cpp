// The objects of a map.

#include "map/MapReader.h"

#include <algorithm>

static KXMapShape shapeOf(const _KXJsonValue& value) {
    const std::pair<const char*, KXMapShape> shapes[] = {
        {"gid", KXMapShapeTile},        {"polygon", KXMapShapePolygon}, {"polyline", KXMapShapePolyline},
        {"text", KXMapShapeText},       {"ellipse", KXMapShapeEllipse}, {"point", KXMapShapePoint},
        {"capsule", KXMapShapeCapsule},
    };
    for (const auto& [key, shape] : shapes)
        if (value.has(key) && (value.member(key).kind() != _KXJsonKind::Flag || value.member(key).flag()))
            return shape;
    return KXMapShapeRect;
}

// What a tile says of itself counts for an object that says nothing else.
static void inherit(KXMapObject& object, const _KXTileInfo& tile) {
    if (object.type.empty())
        object.type = tile.type;
    for (const KXMapProperty& property : tile.properties)
        if (!KXFindMapProperty(object.properties, property.name.c_str()))
            object.properties.push_back(property);
}

static KXMapObject readObject(const _KXJsonValue& value, int layer, const _KXMapState& map) {
    if (value.has("template"))
        value.member("template").fail("objects of templates cannot be loaded; detach them in the editor");
    KXMapObject object = {};
    object.id = value.integer("id", 0);
    object.layer = layer;
    object.name = value.text("name");
    object.type = _KXReadMapType(value);
    object.shape = shapeOf(value);
    const KXPoint offset = map.layers[static_cast<std::size_t>(layer)].offset;
    object.pivot = KXPoint{value.number("x", 0), value.number("y", 0)} + offset;
    object.rect = {object.pivot, {value.number("width", 0), value.number("height", 0)}};
    object.rotation = value.number("rotation", 0);
    object.visible = value.flag("visible", true) ? -1 : 0;
    object.properties = _KXReadMapProperties(value);
    if (object.shape == KXMapShapeText)
        object.text = value.member("text").text("text");
    const bool hasPoints = object.shape == KXMapShapePolygon || object.shape == KXMapShapePolyline;
    for (const _KXJsonValue& point :
         hasPoints ? value.elements(object.shape == KXMapShapePolygon ? "polygon" : "polyline")
                   : std::vector<_KXJsonValue>())
        object.points.push_back(object.pivot + KXPoint{point.number("x", 0), point.number("y", 0)});
    if (object.shape == KXMapShapeTile) {
        object.tile = map.tileOf(static_cast<std::uint32_t>(value.member("gid").whole(0, 0xFFFFFFFF)));
        KXPoint alignment = {0, 1};
        if (object.tile.tileset >= 0)
            alignment = map.tilesets[static_cast<std::size_t>(object.tile.tileset)].alignment;
        object.rect.origin -=
            KXPoint{alignment.x * object.rect.size.width, alignment.y * object.rect.size.height};
        if (const _KXTileInfo* const tile = map.infoOf(object.tile))
            inherit(object, *tile);
    }
    return object;
}

void _KXReadObjects(const _KXJsonValue& value, int layer, _KXMapState& map) {
    const auto first = static_cast<std::ptrdiff_t>(map.objects.size());
    for (const _KXJsonValue& object : value.elements("objects"))
        map.objects.push_back(readObject(object.named(), layer, map));
    const std::string order = value.text("draworder", "topdown");
    if (order == "topdown")
        std::stable_sort(map.objects.begin() + first, map.objects.end(),
                         [](const KXMapObject& a, const KXMapObject& b) { return a.pivot.y < b.pivot.y; });
    else if (order != "index")
        value.member("draworder").fail("is unknown");
}
