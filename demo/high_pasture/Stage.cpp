#include "Stage.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace {
struct About {
    const char *file, *title;
    std::vector<const char*> signs; ///< From left to right, where the map has no texts of its own.
};
const About& about(int number) {
    static const About levels[Stage::count] = {
        {"meadow.tmj",
         "The Meadow",
         {"The herd has gone up to the high pasture without you. Off you go!\nHold jump longer to jump "
          "higher.",
          "Beetles mind being walked into. They do not mind being jumped on: you bounce.",
          "Planks carry you, and you can jump through them from below. Press down to drop.",
          "Thistles prick. Ring the bell: should you stumble, you wake up there."}},
        {"ravine.tmj", "The Ravine", {}},
        {"pass.tmj", "The Pass", {}}};
    return levels[number];
}
} // namespace

const char* Stage::title(int number) { return about(number).title; }

Stage::Stage(const Assets& assets, int number) : map(assets.path(about(number).file)) {
    ground = map.layerNamed("Ground");
    for (int i = 0; i < static_cast<int>(map.layers().size()); ++i)
        if (map.layers()[static_cast<std::size_t>(i)].kind == KXMapLayerTiles)
            addTiles(i);
    for (const KXMapObject& object : map.objects())
        add(object.type, object.rect, object.properties);
    sortOut(number);
    if (ground < 0 || gate.size.width <= 0)
        throw std::bad_alloc();
}

void Stage::addTiles(int layer) {
    const int columns = static_cast<int>(map.size().width), rows = static_cast<int>(map.size().height);
    for (int column = 0; column < columns; ++column)
        for (int row = 0; row < rows; ++row) {
            const KXTile found = map.tileAt(layer, column, row);
            const KXRect cell = {{static_cast<float>(column) * tile, static_cast<float>(row) * tile},
                                 {tile, tile}};
            if (found.tileset >= 0)
                add(map.tileType(found), cell, map.tileProperties(found));
        }
}

void Stage::add(const std::string& type, KXRect rect, const KXMapProperties& properties) {
    const bool isTile = rect.size.width == tile && rect.size.height == tile;
    if (type == "start") {
        start = rect.origin;
    } else if (type == "gate") {
        gate = rect;
    } else if (type == "flower") {
        flowers.push_back(rect);
    } else if (type == "bell") {
        bells.push_back(rect);
    } else if (type == "beetle") {
        beetles.push_back(rect);
    } else if (type == "ledge") {
        ledges.push_back({rect.origin, {rect.size.width, 6}});
    } else if (type == "crow") {
        constexpr float usual = 5 * tile; // to either side, of one that was painted
        crows.push_back(isTile ? KXGrownRect(rect, {usual, 0}) : rect);
    } else if (type == "rope") {
        isTile ? _ropeTiles.push_back(rect) : ropes.push_back(rect);
    } else if (type == "sign") {
        const KXMapProperty* const text = KXFindMapProperty(properties, "text");
        signs.push_back({rect, text ? text->text : ""});
    }
}

// Painted ropes: tiles beside or below each other are one.
void Stage::addRope(KXRect rect) {
    for (Way& rope : ropes) {
        const KXRect both = KXUnion(rope, rect);
        if (KXRectsMeet(rope, rect) && (both.size.width == tile || both.size.height == tile)) {
            rope = both;
            return;
        }
    }
    ropes.push_back(rect);
}

void Stage::sortOut(int number) {
    for (const KXRect& rope : _ropeTiles)
        addRope(rope);
    std::ranges::sort(bells, {}, [](const KXRect& bell) { return bell.origin.x; });
    std::ranges::sort(signs, {}, [](const Sign& sign) { return sign.rect.origin.x; });
    const auto& texts = about(number).signs;
    for (std::size_t i = 0; i < std::min(signs.size(), texts.size()); ++i)
        if (signs[i].text.empty())
            signs[i].text = texts[i];
}

KXRect Stage::area() const { return {{0, 0}, {map.size().width * tile, map.size().height * tile}}; }

bool Stage::isGrass(int column, int row) const {
    const auto flag = KXFindMapProperty(map.tileProperties(map.tileAt(ground, column, row)), "grass");
    return flag && flag->number != 0;
}

bool Stage::isDeadly(KXRect body) const {
    const KXPoint end = KXRectEnd(body);
    for (float y = body.origin.y; y < end.y + tile; y += tile)
        for (float x = body.origin.x; x < end.x + tile; x += tile) {
            const KXPoint at = {std::fmin(x, end.x - 1), std::fmin(y, end.y - 1)};
            const KXTile found = map.tileAt(ground, at);
            if (found.tileset < 0 || map.tileType(found) != std::string_view("thistle"))
                continue;
            // Its tips are lower than its cell, and only they prick.
            const KXPoint corner = {std::floor(at.x / tile) * tile, std::floor(at.y / tile) * tile};
            if (KXRectsOverlap(body, {{corner.x + 3, corner.y + 6}, {tile - 6, tile - 6}}))
                return true;
        }
    return false;
}
