#include "util/Utf8.h"

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

static bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Bytes of the well-formed character at the start of a terminated text; 0 if there is none.
static std::size_t characterLength(const char* text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = announcedLength(byte(0));
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(byte(i)))
            return 0;
    const bool tooLong = (byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xF0 && byte(1) < 0x90);
    const bool surrogate = byte(0) == 0xED && byte(1) > 0x9F;
    const bool tooHigh = byte(0) == 0xF4 && byte(1) > 0x8F;
    return tooLong || surrogate || tooHigh ? 0 : length;
}

void _KXDropCutCharacter(char* text, std::size_t length) {
    std::size_t lead = length;
    while (lead > 0 && length - lead < 3 && isContinuation(static_cast<unsigned char>(text[lead - 1])))
        --lead;
    if (lead == 0)
        return;
    --lead;
    if (announcedLength(static_cast<unsigned char>(text[lead])) > length - lead)
        text[lead] = 0;
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
