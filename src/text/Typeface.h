#pragma once

#include "text/GlyphAtlas.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct hb_font_t;

/// Where a font comes from.
struct _KXFontSource {
    std::string path;  ///< The file.
    std::string bytes; ///< What would be in it, for a font in memory.
};

/// A font at one size, as layouts use it: glyphs are asked for by their index, which is what shaping gives.
/// All that use the same one share it.
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

    /// What a glyph shows in the current OpenGL context, which must be there: made when it is first asked
    /// for.
    /// @param grown by how much it is grown all around, in 64ths of a pixel; 0 for the glyph as it is.
    const _KXGlyphInk& ink(std::uint32_t glyph, std::uint32_t grown);

private:
    struct ContextGlyphs {
        unsigned context;
        _KXGlyphAtlas atlas;
        std::unordered_map<std::uint64_t, _KXGlyphInk> inks; // by growth and glyph
    };
    explicit _KXTypeface(std::shared_ptr<const _KXFontSource> source);
    bool load(int size);
    void measure();
    ContextGlyphs& glyphsHere();
    _KXGlyphInk makeInk(_KXGlyphAtlas& atlas, std::uint32_t glyph, std::uint32_t grown);

    std::shared_ptr<const _KXFontSource> _source;
    std::shared_ptr<FT_LibraryRec_> _library;
    int _size = 0;
    FT_Face _face = nullptr;
    hb_font_t* _shaper = nullptr;
    float _capHeight = 0, _blankWidth = 0;
    std::vector<std::unique_ptr<ContextGlyphs>> _glyphs;
};

/// A typeface, and those that are asked for what it does not have.
using _KXTypefaces = std::vector<std::shared_ptr<_KXTypeface>>;
