#pragma once

#include <Kobaltrix/KXTypes.h>

#include <string>

class KXFont;

/// What the braces of colour spans mean in a text.
enum class _KXSpans {
    Colored, ///< Spans colour their text.
    Plain    ///< They are text like any other: the text is a file's name or what a user typed.
};

/// @a text as it fits into @a width pixels: whole, or cut between two characters with three dots behind,
/// where a colour span that is cut still ends.
std::string _KXTextThatFits(KXFont& font, const char* text, float width, _KXSpans spans);

/// Prints a text, no format.
void _KXPrintRow(KXFont& font, KXPoint p, KXColor color, const char* text, _KXSpans spans);
