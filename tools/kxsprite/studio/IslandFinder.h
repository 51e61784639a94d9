#pragma once

#include "../Document.h"

#include <Kobaltrix/KXImage.h>

/// Islands are what lies on a picture with nothing around it: pixels that are not wholly transparent and
/// touch each other, also by their corners.
///
/// The boxes of all islands, as they are read: in rows of those that stand beside each other, from the top
/// down, and in each row from the left to the right. Takes time for each pixel once, and memory for a row of
/// pixels and for the islands. A picture that is mostly dust has none.
/// @param gap so many transparent pixels between two islands, in any direction, make them no two.
std::vector<Area> findIslands(const KXImage& picture, int gap = 0);

/// The most islands that are told of; a picture that has more has none.
constexpr std::size_t mostIslands = 65'536;

/// The index of the smallest box in which a pixel lies, -1 for none.
int islandAt(const std::vector<Area>& islands, int x, int y);
