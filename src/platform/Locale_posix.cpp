#include "platform/Locale.h"

#include <clocale>
#include <cstdlib>
#include <cwctype>
#if __has_include(<xlocale.h>) // where locale_t is no part of the headers above
#include <xlocale.h>
#endif

double _KXNumberIn(const char* text) {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, nullptr, plain);
}

char32_t _KXLowerCase(char32_t character) {
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    static const locale_t everyScript = [] {
        const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return utf8 ? utf8 : newlocale(LC_CTYPE_MASK, "en_US.UTF-8", nullptr);
    }();
    return everyScript ? towlower_l(static_cast<wint_t>(character), everyScript) : character;
}
