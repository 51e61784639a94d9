#include "util/TextOrder.h"

#include "util/Utf8.h"

#include <algorithm>
#include <clocale>
#include <cwctype>
#ifdef __APPLE__
#include <xlocale.h>
#endif

static char32_t lowerCase(char32_t character) {
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    // Not the game's locale: it may know the letters of its own language only, or none.
    static const locale_t everyScript = [] {
        const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return utf8 ? utf8 : newlocale(LC_CTYPE_MASK, "en_US.UTF-8", nullptr);
    }();
    return everyScript ? towlower_l(static_cast<wint_t>(character), everyScript) : character;
}

// Reads a character of a well-formed text, which has one more, in lower case.
static char32_t nextLowerCase(const char*& position) {
    const auto byte = [&] { return static_cast<unsigned char>(*position++); };
    const unsigned lead = byte();
    if (lead < 0x80)
        return lowerCase(lead);
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    char32_t character = lead & (0x3Fu >> more);
    for (int i = 0; i < more; ++i)
        character = character << 6 | (byte() & 0x3Fu);
    return lowerCase(character);
}

static void append(std::string& text, char32_t character) {
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

std::string _KXFoldedText(const char* text) {
    const _KXLegibleText legible(text);
    std::string folded;
    for (const char* position = legible.get(); *position;)
        append(folded, nextLowerCase(position));
    return folded;
}

bool _KXBeginsWith(const char* text, const char* prefix) {
    // Almost every row of a long list is told by its first letter already.
    const auto first = static_cast<unsigned char>(*text);
    if (*prefix && first < 0x80 && lowerCase(first) != static_cast<unsigned char>(*prefix))
        return false;
    const _KXLegibleText legible(text);
    const char* position = legible.get();
    while (*prefix)
        if (!*position || nextLowerCase(position) != nextLowerCase(prefix))
            return false;
    return true;
}

// A number without its leading zeros, behind a byte for its length: of two numbers the longer one is larger.
static void appendNumber(std::string& key, const char*& position) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    while (*position == '0')
        ++position;
    const char* end = position;
    while (isDigit(*end))
        ++end;
    key += '0'; // sorts among other characters as a digit does
    key += static_cast<char>(std::min<std::ptrdiff_t>(end - position, 255));
    key.append(position, end);
    position = end;
}

std::string _KXNaturalSortKey(const char* text) {
    const _KXLegibleText legible(text);
    std::string key;
    for (const char* position = legible.get(); *position;) {
        if (*position >= '0' && *position <= '9')
            appendNumber(key, position);
        else
            append(key, nextLowerCase(position));
    }
    return key;
}
