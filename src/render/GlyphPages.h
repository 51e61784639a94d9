#pragma once

#include <cstddef>

/// The textures of some glyphs: the same pixels in both, white and as opaque as the glyph covers them, or of
/// the glyphs' own colours.
struct _KXGlyphPage {
    unsigned smooth; ///< Filtered, for glyphs of any size anywhere.
    /// Not filtered, as software draws fastest: the same on whole pixels at natural size. With other drivers
    /// it is the smooth one.
    unsigned sharp;
    bool isColored;

    bool hasSharp() const { return sharp != smooth; }
};

/// How opaque a glyph makes each pixel of a rectangle, or what they are: blue, green, red and opacity.
struct _KXGlyphBitmap {
    const unsigned char* bytes;
    int width, height;
    int pitch; ///< Bytes from one row to the next.
    bool isColored = false;
};

/// Empty pixels that are uploaded around every glyph: filtering never reaches a neighbour, nor what lay there
/// before.
inline constexpr int _KXGlyphBorder = 1;

// The current OpenGL context is the one whose pages these are; its state stays as it was.

/// The longest side that a texture may have.
int _KXLargestTextureSide();
/// Makes an empty square page. One without textures if the driver cannot hold it.
_KXGlyphPage _KXMakeGlyphPage(int side, bool isColored);
/// Deletes the textures of a page.
void _KXDeleteGlyphPage(const _KXGlyphPage& page);
/// How many bytes a page takes.
std::size_t _KXBytesOfGlyphPage(const _KXGlyphPage& page, int side);
/// Copies a glyph and its border onto a page. @param x,y where the border begins.
void _KXUploadGlyph(const _KXGlyphPage& page, int x, int y, const _KXGlyphBitmap& bitmap);
