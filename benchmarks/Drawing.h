#pragma once

#include "Parts.h"

#include <memory>
#include <vector>

/// Where things are drawn: the same places for both sides of a row.
struct Place {
    int x, y, rotation;
};

/// @param rotatedEvery one in so many is turned; 0 for none.
std::vector<Place> places(int count, int rotatedEvery);

/// A texture of one colour.
std::unique_ptr<KXTexture> plainTexture(int side);

/// A prefilled array of textured or plain quads, drawn with one call. Nothing is faster with a graphics card;
/// a driver that draws in software may be faster with smaller calls, as a batch makes them.
class Floor {
public:
    Floor(const std::vector<Place>& places, int side);
    void draw(bool textured) const;

private:
    struct Corner {
        float x, y, u, v;
        KXColor color;
    };
    std::vector<Corner> _corners;
};
