#include "util/Utf8.h"

#include "util/KXString.h"

#include <algorithm>
#include <cstring>

// Bytes of the character that a lead byte announces; 0 for a byte that can begin none.
static std::size_t announcedLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

static bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// Bytes of the well-formed character at the start of a terminated text; 0 if there is none.
static std::size_t characterLength(const char* text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = announcedLength(byte(0));
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(text[i]))
            return 0;
    const bool tooLong = (byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xF0 && byte(1) < 0x90);
    const bool surrogate = byte(0) == 0xED && byte(1) > 0x9F;
    const bool tooHigh = byte(0) == 0xF4 && byte(1) > 0x8F;
    return tooLong || surrogate || tooHigh ? 0 : length;
}

void _KXDropCutCharacter(char* text, std::size_t length) {
    std::size_t lead = length;
    while (lead > 0 && length - lead < 3 && isContinuation(text[lead - 1]))
        --lead;
    if (lead == 0)
        return;
    --lead;
    if (announcedLength(static_cast<unsigned char>(text[lead])) > length - lead)
        text[lead] = 0;
}

std::string _KXFirstBytes(const char* text, std::size_t bytes) {
    std::string first(_KXTextIn(text, bytes));
    if (first.size() == bytes)
        _KXDropCutCharacter(first.data(), bytes);
    first.resize(std::strlen(first.c_str()));
    return first;
}

_KXLegibleText::_KXLegibleText(const char* text) : _text(text) {
    const char* position = text;
    while (*position) {
        const std::size_t length = characterLength(position);
        if (length == 0)
            break;
        position += length;
    }
    if (!*position)
        return;
    _repaired.assign(text, position);
    while (*position) {
        const std::size_t length = characterLength(position);
        if (length == 0)
            _repaired += '?';
        else
            _repaired.append(position, length);
        position += length == 0 ? 1 : length;
    }
    _text = _repaired.c_str();
}

std::size_t _KXNextCharacter(std::string_view text, std::size_t position) {
    if (position >= text.size())
        return text.size();
    do
        ++position;
    while (position < text.size() && isContinuation(text[position]));
    return position;
}

std::size_t _KXPreviousCharacter(std::string_view text, std::size_t position) {
    position = std::min(position, text.size());
    while (position > 0 && isContinuation(text[--position])) {
    }
    return position;
}

std::size_t _KXCharacterStart(std::string_view text, std::size_t position) {
    if (position >= text.size())
        return text.size();
    while (position > 0 && isContinuation(text[position]))
        --position;
    return position;
}

std::string_view _KXCharacterAt(std::string_view text, std::size_t position) {
    position = std::min(position, text.size());
    return text.substr(position, _KXNextCharacter(text, position) - position);
}

std::size_t _KXCountCharacters(std::string_view text) {
    const auto begins = [](char byte) { return !isContinuation(byte); };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

char32_t _KXCodePoint(std::string_view character) {
    if (character.empty())
        return 0;
    const auto lead = static_cast<unsigned char>(character[0]);
    if (lead < 0x80)
        return lead;
    char32_t value = lead & (0x7Fu >> std::min<std::size_t>(character.size(), 7));
    for (const char byte : character.substr(1))
        value = value << 6 | (static_cast<unsigned char>(byte) & 0x3Fu);
    return value;
}

char32_t _KXTakeCharacter(std::string_view& text) {
    const std::string_view character = _KXCharacterAt(text, 0);
    text.remove_prefix(character.size());
    return _KXCodePoint(character);
}

void _KXAppendCharacter(std::string& text, char32_t character) {
    const auto tail = [character](int shift) {
        return static_cast<char>(0x80 | (character >> shift & 0x3F));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0 | character >> 6), tail(0)};
    } else if (character < 0x10000) {
        text += {static_cast<char>(0xE0 | character >> 12), tail(6), tail(0)};
    } else {
        text += {static_cast<char>(0xF0 | character >> 18), tail(12), tail(6), tail(0)};
    }
}
