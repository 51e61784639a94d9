#include "Pixels.h"

#include <algorithm>
#include <cstring>

static bool isSame(KXPixel a, KXPixel b) { return std::memcmp(&a, &b, sizeof a) == 0; }

Pixels::Pixels(const KXImage& picture)
    : _width(picture.width()), _height(picture.height()), _across((picture.width() + side - 1) / side) {
    const int down = (_height + side - 1) / side;
    for (int i = 0; i < _across * down; ++i)
        _tiles.push_back(std::make_shared<Tile>(Tile{}));
    for (int y = 0; y < _height; ++y)
        for (int x = 0; x < _width; x += side) {
            const int count = std::min(side, _width - x);
            std::copy_n(picture.row(y) + x, count,
                        _tiles[tileAt(x, y)]->begin() + static_cast<int>(placeIn(x, y)));
        }
}

KXPixel Pixels::at(int x, int y) const {
    return has(x, y) ? (*_tiles[tileAt(x, y)])[placeIn(x, y)] : KXPixel{};
}

void Pixels::set(int x, int y, KXPixel pixel) {
    if (!has(x, y) || isSame(at(x, y), pixel))
        return;
    std::shared_ptr<Tile>& tile = _tiles[tileAt(x, y)];
    if (tile.use_count() > 1)
        tile = std::make_shared<Tile>(*tile);
    (*tile)[placeIn(x, y)] = pixel;
}

// By runs of a row, of which each is looked at from the row above and the row below.
void Pixels::fill(int x, int y, KXPixel pixel) {
    const KXPixel old = at(x, y);
    if (!has(x, y) || isSame(old, pixel))
        return;
    std::vector<std::pair<int, int>> waiting = {{x, y}};
    while (!waiting.empty()) {
        const auto [from, row] = waiting.back();
        waiting.pop_back();
        int left = from, right = from;
        if (!isSame(at(from, row), old))
            continue;
        while (left > 0 && isSame(at(left - 1, row), old))
            --left;
        while (right + 1 < _width && isSame(at(right + 1, row), old))
            ++right;
        for (int i = left; i <= right; ++i)
            set(i, row, pixel);
        for (const int next : {row - 1, row + 1})
            for (int i = left; i <= right; ++i)
                if (has(i, next) && isSame(at(i, next), old) && (i == left || !isSame(at(i - 1, next), old)))
                    waiting.emplace_back(i, next);
    }
}

KXRect Pixels::drawInto(KXImage& picture, const Pixels& before) const {
    const bool isAnother = before._width != _width || before._height != _height;
    if (isAnother || picture.width() != _width || picture.height() != _height)
        picture = KXImage(_width, _height);
    int left = _width, top = _height, right = 0, bottom = 0;
    for (int y = 0; y < _height; y += side)
        for (int x = 0; x < _width; x += side) {
            const std::size_t tile = tileAt(x, y);
            if (!isAnother && before._tiles[tile] == _tiles[tile])
                continue;
            for (int row = y; row < std::min(y + side, _height); ++row)
                std::copy_n(_tiles[tile]->begin() + static_cast<int>(placeIn(x, row)),
                            std::min(side, _width - x), picture.row(row) + x);
            left = std::min(left, x), top = std::min(top, y);
            right = std::max(right, std::min(x + side, _width));
            bottom = std::max(bottom, std::min(y + side, _height));
        }
    if (right == 0)
        return {{0, 0}, {0, 0}};
    return {{static_cast<float>(left), static_cast<float>(top)},
            {static_cast<float>(right - left), static_cast<float>(bottom - top)}};
}

KXImage Pixels::image() const {
    KXImage picture;
    drawInto(picture, Pixels());
    return picture;
}

bool Pixels::operator==(const Pixels& other) const {
    const auto isSameTile = [](const auto& a, const auto& b) {
        return a == b || std::memcmp(a->data(), b->data(), sizeof(Tile)) == 0;
    };
    return _width == other._width && _height == other._height &&
           std::equal(_tiles.begin(), _tiles.end(), other._tiles.begin(), isSameTile);
}
