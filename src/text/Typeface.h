#pragma once

#include "text/GlyphInk.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct hb_font_t;

/// Where a font comes from.
class _KXFontSource {
public:
    explicit _KXFontSource(std::string file, std::string content = {});
    ~_KXFontSource(); // with it the glyphs go
    _KXFontSource(const _KXFontSource&) = delete;
    _KXFontSource& operator=(const _KXFontSource&) = delete;

    const std::string path;     ///< The file.
    const std::string bytes;    ///< What would be in it, for a font in memory.
    const std::uint32_t number; ///< That no other has had.
};

/// A font at one size, of outlines or of pictures in colour, as layouts use it: glyphs are asked for by their
/// index, which is what shaping gives. All that use the same one share it.
class _KXTypeface {
public:
    /// The typeface of a source at a size; null where there is none.
    static std::shared_ptr<_KXTypeface> open(const std::shared_ptr<const _KXFontSource>& source, int size);
    ~_KXTypeface();
    _KXTypeface(const _KXTypeface&) = delete;
    _KXTypeface& operator=(const _KXTypeface&) = delete;

    bool has(std::uint32_t character) const;
    hb_font_t* shaper() const { return _shaper; }
    // Whole pixels; the descent is positive.
    float ascent() const;
    float descent() const;
    float gap() const;
    float capHeight() const { return _capHeight; }
    float blankWidth() const { return _blankWidth; } ///< Not rounded.

    /// What a glyph shows, made if it is not there. Null if the driver has no room for it. Valid until the
    /// next is made.
    /// @param scale how many pixels a unit has. @param grown by how much it is grown all around, in units; 0
    /// for the glyph as it is.
    const _KXGlyphInk* ink(_KXGlyphStore& store, std::uint32_t glyph, float scale, float grown);

private:
    explicit _KXTypeface(std::shared_ptr<const _KXFontSource> source);
    bool load(int size);
    bool setSize(int size);
    float units(FT_Pos length) const { return static_cast<float>(length) / 64 * _strikeScale; }
    void measure();

    std::shared_ptr<const _KXFontSource> _source;
    std::shared_ptr<FT_LibraryRec_> _library;
    int _size = 0;
    float _strikeScale = 1; // of pictures, which a font has in sizes of its own
    FT_Face _face = nullptr;
    hb_font_t* _shaper = nullptr;
    float _capHeight = 0, _blankWidth = 0;
};

/// A typeface, and those that are asked for what it does not have.
using _KXTypefaces = std::vector<std::shared_ptr<_KXTypeface>>;
