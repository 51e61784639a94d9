#pragma once

#include "render/GlyphStore.h"

#include <FTGL/ftgl.h>

#include <vector>

/// The glyphs of a text that a face renders.
struct _KXGlyphRun {
    _KXGlyphStore& store;
    std::uint32_t size; ///< Of the em that they are made in, in 64ths of a pixel.
    float scale;        ///< How many pixels of theirs a unit has.
    /// In the order of the text and in their pixels: y points up, the baseline's start is (0, 0).
    std::vector<_KXGlyphQuad>& quads;
};

/// What faces of FTGL render into.
inline constinit _KXGlyphRun* _KXCurrentGlyphRun = nullptr;

/// How all glyphs are loaded: hinting would bend the outlines to the pixels, and advances to whole ones.
inline constexpr FT_Int32 _KXGlyphLoadFlags = FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;

/// The size of the em that glyphs of a font are made in, in 64ths of a pixel.
/// @param size of the font, in units. @param scale how many pixels a unit has.
std::uint32_t _KXInkSize(int size, float scale);
/// What a glyph of a face shows, made if it is not there; the face keeps its own size. Null if it cannot be
/// had now, as where the driver has no room for it. Valid until the next is made.
/// @param key one whose font is the face's.
const _KXGlyphInk* _KXInkOf(_KXGlyphStore& store, FT_Face face, const _KXGlyphKey& key);

/// Makes FTGL's glyph of what the face has just loaded. It tells #_KXCurrentGlyphRun what is to be drawn, and
/// asks for its ink whenever that has left. Null if no texture could hold it.
///
/// FTGL's own texture font reserves room for every glyph of the file, which takes tens of megabytes at common
/// sizes, complains on the error stream about glyphs larger than the font claims, and draws each glyph by
/// itself.
/// @param font the number of the face's font.
FTGlyph* _KXMakeFTGLGlyph(FT_GlyphSlot slot, std::uint32_t font);
