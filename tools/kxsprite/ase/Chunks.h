#pragma once

#include "AseSprite.h"
#include "Bytes.h"

// The kinds of chunks, each read into the sprite.

/// What may still be taken of memory, so that a small file does not ask for all there is.
class AseBudget {
public:
    /// Throws a Fault at this place if it is too much.
    void take(std::uint64_t bytes, const AseBytes& at);

private:
    std::uint64_t _left = std::uint64_t{1} << 30;
};

/// @param opacityCounts whether the file says the opacity of layers.
void readLayer(AseBytes& chunk, bool opacityCounts, AseSprite& sprite);

/// Adds what a chunk of a cel says to the last frame of the sprite, unless it is of a layer that is not
/// shown.
void readCel(AseBytes& chunk, AseSprite& sprite, AseBudget& budget);
/// Puts the cels of the last frame in the order of their layers.
void finishCels(const AseBytes& frame, AseSprite& sprite);

/// @param frames how many the file has.
void readTags(AseBytes& chunk, int frames, AseSprite& sprite);
void readSlice(AseBytes& chunk, AseSprite& sprite);
/// A chunk of several slices, which some versions wrote.
void readSlices(AseBytes& chunk, AseSprite& sprite);
