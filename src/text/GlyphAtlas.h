#pragma once

#include "render/GlyphPages.h"
#include "render/QuadStream.h"

#include <FTGL/ftgl.h>
#include <freetype/ftstroke.h>

#include <optional>
#include <vector>

/// The glyphs that a face renders, in the order of the text and in FTGL's coordinates: y points up, the
/// baseline's start is (0, 0).
inline constinit std::vector<_KXGlyphQuad>* _KXRenderedGlyphs = nullptr;

/// How all glyphs are loaded: hinting would bend the outlines to the pixels, and advances to whole ones.
inline constexpr FT_Int32 _KXGlyphLoadFlags = FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;

/// What a glyph shows: a part of a page, placed against the pen. Without a texture it shows nothing, as a
/// blank.
struct _KXGlyphInk {
    _KXGlyphPage page = {};
    _KXTextureRect source = {};
    KXPoint leftTop = {0, 0}; ///< From the pen, y upward.
    KXSize size = {0, 0};
};

/// The textures that a face's glyphs are drawn from, filled shelf by shelf as glyphs are first used.
///
/// FTGL's own texture font reserves room for every glyph of the file, which takes tens of megabytes at common
/// sizes, complains on the error stream about glyphs larger than the font claims, and draws each glyph by
/// itself. These glyphs only tell, in #_KXRenderedGlyphs, what is to be drawn.
class _KXGlyphAtlas {
public:
    /// Makes the glyph that the face has just loaded; needs a current OpenGL context and changes none of its
    /// state. Null if it cannot be drawn or no texture can hold it; it is asked for again when it is next
    /// drawn.
    FTGlyph* makeGlyph(FT_GlyphSlot slot);
    /// The same for what a glyph shows. None where makeGlyph() gives null.
    /// @param stroker the glyph is grown by what it draws around it; null for the glyph as it is.
    std::optional<_KXGlyphInk> makeInk(FT_GlyphSlot slot, FT_Stroker stroker);
    /// Deletes the textures; the context they were made in must be current.
    void clear() { _pages.clear(); }

private:
    std::optional<_KXGlyphInk> store(const FT_Bitmap& bitmap, KXPoint leftTop, int fontSize);
    bool hasRoom(int width, int height);
    bool addPage(int width, int height, int fontSize);

    _KXGlyphPages _pages;
    int _side = 0;        // of the last page, the one being filled
    int _x = 0;           // next free pixel on the shelf
    int _y = 0;           // top of the shelf
    int _shelfHeight = 0; // of its tallest glyph so far
};
