#pragma once

#include "Assets.h"

#include <string>
#include <vector>

/// A level as it is at its beginning: a map, and what stands on it. What stands there is either tiles of a
/// layer, which the level editor paints, or objects of the same types, which may be larger and have a text.
class Stage {
public:
    struct Sign {
        KXRect rect;
        std::string text;
    };
    /// A crow flies to and fro in it, or a basket.
    using Way = KXRect;

    static constexpr int count = 3;
    static constexpr float tile = 16; ///< The side of a tile, in pixels of the map.

    /// Loads one of the levels, from 0. Throws std::bad_alloc if it cannot; KXError() says why.
    Stage(const Assets& assets, int number);

    /// What a level is called.
    static const char* title(int number);

    /// The area of the whole map.
    KXRect area() const;
    bool isGrass(int column, int row) const;
    bool isDeadly(KXRect body) const;

    KXMap map;
    int ground = -1; ///< The layer that everything stands on.
    KXPoint start = {0, 0};
    KXRect gate = {{0, 0}, {0, 0}};
    std::vector<KXRect> flowers, bells, beetles, ledges;
    std::vector<Way> crows, ropes;
    std::vector<Sign> signs;

private:
    void add(const std::string& type, KXRect rect, const KXMapProperties& properties);
    void addTiles(int layer);
    void addRope(KXRect rect);
    void sortOut(int number);

    std::vector<KXRect> _ropeTiles;
};
