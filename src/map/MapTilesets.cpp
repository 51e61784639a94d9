// Sets of tiles, and the properties of whatever has some.

#include "map/MapReader.h"

#include <algorithm>

namespace {
void addProperty(KXMapProperties& properties, const std::string& name, const std::string& type,
                 const _KXJsonValue& value, int depth);

// Members of classes and elements of lists, with their owner's name before their own.
void addNested(KXMapProperties& properties, const std::string& name, const _KXJsonValue& value, int depth) {
    if (depth > 32)
        value.fail("is nested too deeply");
    if (value.kind() == _KXJsonKind::List) {
        int index = 0;
        for (const _KXJsonValue& element : value.elements())
            addProperty(properties, name + "." + std::to_string(index++), element.text("type", "string"),
                        element.member("value"), depth + 1);
        return;
    }
    for (const auto& [key, member] : value.members()) {
        const char* const type = member.kind() == _KXJsonKind::Flag     ? "bool"
                                 : member.kind() == _KXJsonKind::Number ? "float"
                                 : member.kind() == _KXJsonKind::Text   ? "string"
                                                                        : "class";
        addProperty(properties, name + "." + key, type, member, depth + 1);
    }
}

void addProperty(KXMapProperties& properties, const std::string& name, const std::string& type,
                 const _KXJsonValue& value, int depth) {
    KXMapProperty property = {name, KXMapPropertyText, "", 0, {0, 0, 0, 0}};
    if (type == "class" || type == "list")
        return addNested(properties, name, value, depth);
    if (type == "int" || type == "float" || type == "object") {
        property.type = type == "object" ? KXMapPropertyObject : KXMapPropertyNumber;
        property.number = value.number();
    } else if (type == "bool") {
        property.type = KXMapPropertyFlag;
        property.number = value.flag() ? 1 : 0;
    } else if (type == "color") {
        property.type = KXMapPropertyColor;
        property.text = value.text();
        if (!property.text.empty())
            property.color = value.color();
    } else if (type == "string" || type == "file") {
        property.text = value.text();
    } else {
        value.fail("has an unknown type, " + type);
    }
    properties.push_back(std::move(property));
}

KXPoint alignmentOf(const _KXJsonValue& set) {
    const std::string name = set.text("objectalignment", "unspecified");
    const char* const names[] = {"topleft", "top",        "topright", "left",       "center",
                                 "right",   "bottomleft", "bottom",   "bottomright"};
    for (int i = 0; i < 9; ++i)
        if (name == names[i])
            return {static_cast<float>(i % 3) / 2, static_cast<float>(i / 3) / 2};
    if (name != "unspecified")
        set.member("objectalignment").fail("is unknown");
    return {0, 1};
}

_KXTileInfo readTile(const _KXJsonValue& value, const std::string& file) {
    _KXTileInfo tile;
    tile.type = _KXReadMapType(value);
    tile.properties = _KXReadMapProperties(value);
    for (const _KXJsonValue& frame : value.elements("animation")) {
        constexpr int most = 1 << 30;
        tile.animation.push_back({static_cast<int>(frame.member("tileid").whole(0, most)),
                                  static_cast<int>(frame.member("duration").whole(0, most))});
    }
    const std::string image = value.text("image");
    if (image.empty())
        return tile;
    tile.picture.path = _KXMapPathBeside(file, image);
    tile.size = {value.number("imagewidth", 0), value.number("imageheight", 0)};
    if (value.has("width") || value.has("height")) { // a part of it
        tile.part = {{value.number("x", 0), value.number("y", 0)},
                     {value.number("width", tile.size.width), value.number("height", tile.size.height)}};
        tile.size = tile.part.size;
    }
    return tile;
}

_KXTileset readSet(const _KXJsonValue& value, const std::string& file) {
    constexpr int most = 1 << 24;
    _KXTileset set;
    set.tileSize = {static_cast<float>(value.integer("tilewidth", 0, 0, most)),
                    static_cast<float>(value.integer("tileheight", 0, 0, most))};
    set.count = value.integer("tilecount", 0, 0, 1 << 28);
    set.margin = value.integer("margin", 0, 0, most);
    set.spacing = value.integer("spacing", 0, 0, most);
    set.columns = value.integer("columns", 0, 0, most);
    if (value.has("tileoffset"))
        set.offset = {value.member("tileoffset").number("x", 0), value.member("tileoffset").number("y", 0)};
    set.alignment = alignmentOf(value);
    set.fillsGrid = value.text("tilerendersize", "tile") == "grid";
    set.keepsAspect = value.text("fillmode", "stretch") == "preserve-aspect-fit";
    if (const std::string image = value.text("image"); !image.empty()) {
        set.picture.path = _KXMapPathBeside(file, image);
        set.picture.transparent = value.color("transparentcolor", {0, 0, 0, 0});
        if (set.tileSize.width < 1 || set.tileSize.height < 1)
            value.fail("its tiles have no size");
        const int step = static_cast<int>(set.tileSize.width) + set.spacing;
        if (set.columns == 0) // as very old files have it
            set.columns = (value.integer("imagewidth", 0, 0, most) - set.margin + set.spacing) / step;
        if (set.columns < 1)
            value.fail("it has no columns");
    }
    for (const _KXJsonValue& tile : value.elements("tiles"))
        set.tiles[static_cast<int>(tile.member("id").whole(0, 1 << 28))] = readTile(tile, file);
    return set;
}
} // namespace

KXMapProperties _KXReadMapProperties(const _KXJsonValue& owner) {
    KXMapProperties properties;
    for (const _KXJsonValue& value : owner.elements("properties"))
        addProperty(properties, value.member("name").text(), value.text("type", "string"),
                    value.member("value"), 0);
    return properties;
}

std::string _KXReadMapType(const _KXJsonValue& owner) {
    const std::string type = owner.text("type");
    return type.empty() ? owner.text("class") : type;
}

_KXTileset _KXReadTileset(const _KXJsonValue& value, const std::string& file) {
    const auto first = static_cast<std::uint32_t>(value.member("firstgid").whole(1, 0x0FFFFFFF));
    _KXTileset set;
    if (!value.has("source")) {
        set = readSet(value, file);
    } else {
        const std::string path = _KXMapPathBeside(file, value.text("source"));
        const _KXJsonDocument document(path);
        const _KXJsonValue outside = document.root();
        if (outside.text("type", "tileset") != "tileset")
            outside.member("type").fail("is no set of tiles");
        set = readSet(outside, path);
    }
    set.firstNumber = first;
    return set;
}
