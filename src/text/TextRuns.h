#pragma once

#include "text/Typeface.h"

#include <Kobaltrix/KXTextLayout.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The first half of laying out: what a text consists of, and the glyphs that show it. Characters are code
// points, counted from 0.

/// A glyph and how it follows the one to its left.
struct _KXShapedGlyph {
    std::uint32_t character; ///< The first one that it shows.
    std::uint32_t index;     ///< In its typeface.
    float x, y;              ///< Where it stands against the pen, y downward.
    float advance;           ///< How far it moves the pen.
};

/// Characters of one typeface, script and direction.
struct _KXTextRun {
    std::uint32_t begin, end;
    std::uint32_t firstGlyph, endGlyph; ///< From left to right.
    std::uint16_t typeface;
    std::uint8_t level; ///< Of embedding; odd ones run from right to left.
};

/// What lies between two forced breaks, without them.
struct _KXTextParagraph {
    std::uint32_t begin, end;
    std::uint8_t level; ///< 1 if it runs from right to left.
};

/// What a character does in its line.
enum class _KXTextRole : std::uint8_t {
    Inner,  ///< Belongs to the character before it: they are one for carets, or drawn as one.
    Letter, ///< Begins what is drawn as one.
    Blank,  ///< The same, and not missed at a line's end.
    Tab,    ///< A blank that reaches to the next stop.
    Silent  ///< Shows nothing: a line feed, or another control character.
};

/// A text in glyphs.
struct _KXShapedText {
    std::vector<std::uint32_t> characters;
    std::vector<std::uint32_t> offsets; ///< Of each in bytes, and of the end.
    std::vector<char> breaks;           ///< After each: whether a line may end there, as libunibreak has it.
    std::vector<std::uint8_t> levels;   ///< Of each: of embedding.
    std::vector<_KXTextRole> roles;     ///< Of each.
    std::vector<float> widths;          ///< Of what each begins; of no other character.
    std::vector<std::uint8_t> stops;    ///< Of each: whether a caret may stand before it.
    std::vector<_KXTextParagraph> paragraphs;
    std::vector<_KXTextRun> runs; ///< In the order of the text; a tab is one by itself, without glyphs.
    std::vector<_KXShapedGlyph> glyphs;

    std::uint32_t size() const { return static_cast<std::uint32_t>(characters.size()); }
    /// Whether a line may end before a character.
    bool mayBreakBefore(std::uint32_t character) const;
    /// Behind all that is drawn as one with a character.
    std::uint32_t afterCluster(std::uint32_t character) const;
};

/// Shapes well-formed UTF-8.
_KXShapedText _KXShapeText(std::string_view text, const _KXTypefaces& typefaces, KXTextDirection direction);
