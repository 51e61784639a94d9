#include "Level.h"

#include <Kobaltrix/Kobaltrix.h>

#include <algorithm>
#include <cstdio>
#include <utility>

Level Level::empty() {
    Level level;
    for (const char* name : {"Ground", "Plants"})
        level.layers.push_back({name, true, std::vector<int>(level.columns * level.rows, -1)});
    return level;
}

bool Level::has(int column, int row) const {
    return column >= 0 && column < columns && row >= 0 && row < rows;
}

int& Level::at(int layer, int column, int row) { return layers[layer].tiles[row * columns + column]; }

void Level::resize(int newColumns, int newRows) {
    for (Layer& layer : layers) {
        std::vector<int> tiles(newColumns * newRows, -1);
        for (int row = 0; row < std::min(rows, newRows); ++row)
            std::copy_n(&layer.tiles[row * columns], std::min(columns, newColumns), &tiles[row * newColumns]);
        layer.tiles = std::move(tiles);
    }
    columns = newColumns;
    rows = newRows;
}

void Level::fill(int layer, int column, int row, int tile) {
    const int before = at(layer, column, row);
    std::vector<std::pair<int, int>> open = {{column, row}};
    while (before != tile && !open.empty()) {
        const auto [x, y] = open.back();
        open.pop_back();
        if (!has(x, y) || at(layer, x, y) != before)
            continue;
        at(layer, x, y) = tile;
        open.insert(open.end(), {{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}});
    }
}

bool Level::load(const char* path) {
    KXMap map;
    if (!map.load(path))
        return false;
    Level read;
    read.columns = static_cast<int>(map.size().width);
    read.rows = static_cast<int>(map.size().height);
    for (int i = 0; i < static_cast<int>(map.layers().size()); ++i) {
        const KXMapLayer& layer = map.layers()[i];
        if (layer.kind != KXMapLayerTiles)
            continue;
        read.layers.push_back({layer.name, layer.visible != 0, {}});
        for (int cell = 0; cell < read.columns * read.rows; ++cell) {
            const KXTile tile = map.tileAt(i, cell % read.columns, cell / read.columns);
            read.layers.back().tiles.push_back(tile.tileset == 0 && tile.id < tileCount ? tile.id : -1);
        }
    }
    if (read.layers.empty())
        read.layers = empty().layers, read.resize(read.columns, read.rows);
    *this = std::move(read);
    return true;
}

static std::string inQuotes(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return quoted + "\"";
}

bool Level::save(const char* path) const {
    KXSaveFile file(path); // whole, or not at all
    FILE* const out = file.stream();
    std::fprintf(
        out,
        "{\"type\": \"map\", \"version\": \"1.10\", \"orientation\": \"orthogonal\", \"infinite\": false,\n"
        " \"width\": %d, \"height\": %d, \"tilewidth\": %d, \"tileheight\": %d,\n"
        " \"tilesets\": [{\"firstgid\": 1, \"source\": \"tiles.tsj\"}],\n \"layers\": [",
        columns, rows, tileSide, tileSide);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        std::fprintf(
            out,
            "%s\n  {\"type\": \"tilelayer\", \"id\": %d, \"name\": %s, \"visible\": %s, \"opacity\": 1,\n"
            "   \"x\": 0, \"y\": 0, \"width\": %d, \"height\": %d, \"data\": [",
            i ? "," : "", static_cast<int>(i) + 1, inQuotes(layers[i].name).c_str(),
            layers[i].isVisible ? "true" : "false", columns, rows);
        for (std::size_t cell = 0; cell < layers[i].tiles.size(); ++cell)
            std::fprintf(out, "%s%d", cell ? "," : "", layers[i].tiles[cell] + 1);
        std::fprintf(out, "]}");
    }
    std::fprintf(out, "]}\n");
    return file.commit() != 0;
}

void History::begin(Level other) {
    level = _saved = std::move(other);
    _before.clear();
    _after.clear();
}

void History::note() {
    _before.push_back(level);
    _after.clear();
}

void History::go(std::vector<Level>& from, std::vector<Level>& to) {
    if (from.empty())
        return;
    to.push_back(std::exchange(level, std::move(from.back())));
    from.pop_back();
}
