// A level of tiles in layers, and what was done to it.
#pragma once

#include <string>
#include <vector>

constexpr int tileSide = 16, tileCount = 16, tilesInRow = 8; // of assets/tiles.png

struct Layer {
    std::string name;
    bool isVisible = true;
    std::vector<int> tiles; // row by row, -1 for none

    bool operator==(const Layer&) const = default;
};

struct Level {
    int columns = 40, rows = 20;
    std::vector<Layer> layers;

    static Level empty();
    /// Reads a .tmj file that save() has written, or Tiled. False, with a text in KXError(), if it cannot.
    bool load(const char* path);
    /// Writes one, beside which tiles.tsj is to lie. False, with a text in KXError(), if it cannot.
    bool save(const char* path) const;

    bool has(int column, int row) const;
    int& at(int layer, int column, int row);
    void resize(int newColumns, int newRows);
    /// Puts a tile in place of all that are the same as the one in a cell and connected with it.
    void fill(int layer, int column, int row, int tile);

    bool operator==(const Level&) const = default;
};

/// The level as it is, as it was and as it was to be.
class History {
public:
    /// Another level from here on; nothing of it can be taken back.
    void begin(Level level);
    /// To be called before each change.
    void note();
    void undo() { go(_before, _after); }
    void redo() { go(_after, _before); }
    bool canUndo() const { return !_before.empty(); }
    bool canRedo() const { return !_after.empty(); }
    void noteSaved() { _saved = level; }
    bool isSaved() const { return level == _saved; }

    Level level;

private:
    void go(std::vector<Level>& from, std::vector<Level>& to);

    std::vector<Level> _before, _after;
    Level _saved;
};
