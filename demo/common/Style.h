#pragma once

#include <Kobaltrix/Kobaltrix.h>

// The colours and measures that make a game look like one piece.
namespace Style {
inline constexpr KXSize windowSize = {800, 500};

inline constexpr KXColor night = {0.106f, 0.106f, 0.227f, 1};
inline constexpr KXColor ink = {0.102f, 0.086f, 0.149f, 1};
inline constexpr KXColor panel = {0.141f, 0.110f, 0.200f, 0.92f};
inline constexpr KXColor wood = {0.659f, 0.412f, 0.247f, 1};
inline constexpr KXColor woodDark = {0.431f, 0.259f, 0.188f, 1};
inline constexpr KXColor gold = {1, 0.851f, 0.541f, 1};
inline constexpr KXColor paper = {0.957f, 0.890f, 0.757f, 1};
inline constexpr KXColor teal = {0.290f, 0.604f, 0.651f, 1};
inline constexpr KXColor rose = {0.910f, 0.408f, 0.471f, 1};
inline constexpr KXColor leaf = {0.494f, 0.788f, 0.502f, 1};

inline constexpr int fontSize = 14;

/// A colour with another opacity.
constexpr KXColor faded(KXColor color, float alpha) { return {color.r, color.g, color.b, alpha}; }

/// Prints a text with its middle at an x.
void printCentred(float x, float y, int size, KXColor color, const char* text);
/// Fills a rectangle with round corners.
void fillRounded(KXRect rect, float radius, KXColor color);
/// Gives widgets that are made from now on the game's colours and its room around texts.
void prepareWidgets();
} // namespace Style
