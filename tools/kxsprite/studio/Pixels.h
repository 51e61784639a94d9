#pragma once

#include "../Document.h"

#include <Kobaltrix/KXImage.h>

#include <array>
#include <memory>
#include <vector>

/// A picture in tiles, which copies share: what is kept of it for undo costs what was painted.
class Pixels {
public:
    Pixels() = default;
    explicit Pixels(const KXImage& picture);

    int width() const { return _width; }
    int height() const { return _height; }
    /// Transparent black outside.
    KXPixel at(int x, int y) const;
    /// Nothing happens outside.
    void set(int x, int y, KXPixel pixel);
    /// Gives all pixels that are as the one at a place, and connected with it by their edges, another colour.
    void fill(int x, int y, KXPixel pixel);

    /// Puts it into an image of its size, where it differs from what the image has been made of before.
    /// @param before may be of another size: then all of it. @return the part of it that may be another now.
    KXRect drawInto(KXImage& picture, const Pixels& before) const;
    KXImage image() const;

    /// Whether it has all tiles of another one, and so is the same.
    bool shares(const Pixels& other) const { return _width == other._width && _tiles == other._tiles; }

    bool operator==(const Pixels& other) const;

private:
    static constexpr int side = 32;
    using Tile = std::array<KXPixel, std::size_t{side} * side>;

    std::size_t tileAt(int x, int y) const { return static_cast<std::size_t>(y / side * _across + x / side); }
    static std::size_t placeIn(int x, int y) { return static_cast<std::size_t>(y % side * side + x % side); }
    bool has(int x, int y) const { return x >= 0 && y >= 0 && x < _width && y < _height; }

    int _width = 0, _height = 0, _across = 0; ///< In pixels, and in tiles.
    std::vector<std::shared_ptr<Tile>> _tiles;
};
