#pragma once

#include <cstddef>
#include <string>

/// Removes the incomplete character that cutting a UTF-8 text to @a length bytes may have left at its end.
void _KXDropCutCharacter(char* text, std::size_t length);

/// A text that FTGL can read: its decoder trusts every lead byte, runs over the terminator after a cut
/// sequence and looks up characters that do not exist. Well-formed text is passed through without a copy; in
/// other text every byte that is no part of a character becomes a question mark.
class _KXLegibleText {
public:
    explicit _KXLegibleText(const char* text);
    const char* get() const { return _text; }

private:
    std::string _repaired;
    const char* _text;
};
