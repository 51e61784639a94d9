#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The only place that knows how UTF-8 is written. A character is a code point, a position an offset in bytes.

/// Removes the incomplete character that cutting a UTF-8 text to @a length bytes may have left at its end.
void _KXDropCutCharacter(char* text, std::size_t length);
/// The first @a bytes bytes of a UTF-8 text, less the incomplete character at their end; a shorter text
/// whole.
std::string _KXFirstBytes(const char* text, std::size_t bytes);

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

// What follows walks over well-formed text, such as _KXLegibleText gives. In other text it stays within the
// text and makes progress, and that is all.

/// The position behind the character at @a position; the end stays.
std::size_t _KXNextCharacter(std::string_view text, std::size_t position);
/// The position of the character before @a position; the start stays.
std::size_t _KXPreviousCharacter(std::string_view text, std::size_t position);
/// Where the character begins that the byte at @a position belongs to; the end for positions behind it.
std::size_t _KXCharacterStart(std::string_view text, std::size_t position);
/// The bytes of the character at @a position; none at the end.
std::string_view _KXCharacterAt(std::string_view text, std::size_t position);
/// The number of characters.
std::size_t _KXCountCharacters(std::string_view text);
/// The code point of a character given by its bytes; 0 for none.
char32_t _KXCodePoint(std::string_view character);
/// Takes the first character off a text: its code point, 0 for none.
char32_t _KXTakeCharacter(std::string_view& text);
/// Adds a character to a text.
void _KXAppendCharacter(std::string& text, char32_t character);
