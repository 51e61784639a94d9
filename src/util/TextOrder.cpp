#include "util/TextOrder.h"

#include "platform/Locale.h"
#include "util/Utf8.h"

#include <hb.h>

#include <algorithm>
#include <string_view>
#include <utility>

// Takes a character off a well-formed text, in lower case.
static char32_t takeLowerCase(std::string_view& text) { return _KXLowerCase(_KXTakeCharacter(text)); }

std::string _KXFoldedText(const char* text) {
    const _KXLegibleText legible(text);
    std::string folded;
    for (std::string_view rest = legible.get(); !rest.empty();)
        _KXAppendCharacter(folded, takeLowerCase(rest));
    return folded;
}

bool _KXBeginsWith(const char* text, const char* prefix) {
    // Almost every row of a long list is told by its first letter already.
    const auto first = static_cast<unsigned char>(*text);
    if (*prefix && first < 0x80 && _KXLowerCase(first) != static_cast<unsigned char>(*prefix))
        return false;
    const _KXLegibleText legible(text);
    std::string_view rest = legible.get();
    for (std::string_view wanted = prefix; !wanted.empty();)
        if (rest.empty() || takeLowerCase(rest) != _KXTakeCharacter(wanted))
            return false;
    return true;
}

static bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Takes a number off a text without its leading zeros, behind a byte for its length: of two numbers the
// longer one is larger.
static void takeNumber(std::string& key, std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length]))
        ++length;
    key += '0'; // sorts among other characters as a digit does
    key += static_cast<char>(std::min<std::size_t>(length, 255));
    key += text.substr(0, length);
    text.remove_prefix(length);
}

static bool isMark(char32_t character) {
    return character >= 0x300 && hb_unicode_general_category(hb_unicode_funcs_get_default(), character) ==
                                     HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK;
}

// The letters that a lower-case one is looked up under: of those with marks the letter without them, and of
// those that are no letter with a mark what dictionaries write for them.
static void appendLetters(std::string& key, char32_t letter) {
    constexpr std::pair<char32_t, std::string_view> others[] = {
        {U'ß', "ss"}, {U'æ', "ae"}, {U'œ', "oe"}, {U'ø', "o"}, {U'ł', "l"}, {U'đ', "d"}, {U'ı', "i"}};
    for (const auto& [other, written] : others)
        if (letter == other) {
            key += written;
            return;
        }
    if (isMark(letter))
        return;
    hb_codepoint_t first, second;
    if (letter < 0x80 || !hb_unicode_decompose(hb_unicode_funcs_get_default(), letter, &first, &second)) {
        _KXAppendCharacter(key, letter);
        return;
    }
    appendLetters(key, first);
    if (second)
        appendLetters(key, second);
}

std::string _KXNaturalSortKey(const char* text) {
    const _KXLegibleText legible(text);
    std::string key;
    for (std::string_view rest = legible.get(); !rest.empty();) {
        if (isDigit(rest[0]))
            takeNumber(key, rest);
        else
            appendLetters(key, takeLowerCase(rest));
    }
    return key;
}
