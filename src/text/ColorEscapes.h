#pragma once

#include <Kobaltrix/KXTypes.h>

#include <cstddef>
#include <string_view>

/// A colour span of a text with the plain text before it. The pieces point into the text that was read.
struct _KXColorSpan {
    std::string_view plain; ///< What comes before the span.
    std::string_view text;  ///< What the span colours.
    KXColor color;          ///< Its colour; a component that is no number is 0.
};

/// Reads the next colour span at or after @a position and moves @a position behind it. When there is no
/// further complete span it returns false and leaves @a position at the remaining plain text.
///
/// The colour ends at the first closing brace after @a position, even where that lies before the span;
/// pieces that would then end before they begin are empty.
bool _KXNextColorSpan(const char*& position, _KXColorSpan& span);

/// Copies to @a out what of @a text is visible, cut to @a size bytes with its terminator between two
/// characters.
void _KXVisibleText(char* out, std::size_t size, const char* text);
