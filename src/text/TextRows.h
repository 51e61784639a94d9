#pragma once

#include "text/TextRuns.h"

#include <Kobaltrix/KXTextLayout.h>

// The second half of laying out: what stands on which line, and where.

/// A glyph in its place.
struct _KXPlacedGlyph {
    KXPoint pen;          ///< From the top left of the box, y downward.
    std::uint32_t index;  ///< In its typeface.
    std::uint32_t offset; ///< In bytes, of the first character that it shows.
    std::uint16_t typeface;
};

/// A character in its place: what lies between two places for a caret. The end of a line is none.
struct _KXTextStop {
    int begin, end; ///< In bytes.
    float left, right;
    bool isRightToLeft;
};

/// A line in its place.
struct _KXTextRow {
    KXTextLine line;
    float edge;                       ///< Where a caret stands in it if it has no characters.
    std::uint32_t firstStop, endStop; ///< In the order of the text.
};

/// A text with everything in its place.
struct _KXPlacedText {
    std::vector<_KXPlacedGlyph> glyphs;
    std::vector<_KXTextStop> stops;
    std::vector<_KXTextRow> rows;
    KXSize size = {0, 0};
    bool isCut = false;
};

/// Lays shaped text out in rows. The options are sound ones.
_KXPlacedText _KXPlaceText(const _KXShapedText& shaped, const _KXTypefaces& typefaces,
                           const KXTextOptions& options);
