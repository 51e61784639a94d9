#include "platform/Locale.h"

#include <clocale>
#include <cstdlib>

#include <windows.h>

double _KXNumberIn(const char* text) {
    static const _locale_t plain = _create_locale(LC_ALL, "C");
    return _strtod_l(text, nullptr, plain);
}

// The system's tables have no letters that take two units of UTF-16. Each script of such letters has its
// capitals in a row, and the small ones in another.
static char32_t lowerCaseOfPairs(char32_t character) {
    constexpr struct {
        char32_t first, last, distance;
    } scripts[] = {{0x10400, 0x10427, 40}, {0x104B0, 0x104D3, 40}, {0x10570, 0x10595, 39},
                   {0x10C80, 0x10CB2, 64}, {0x118A0, 0x118BF, 32}, {0x16E40, 0x16E5F, 32},
                   {0x1E900, 0x1E921, 34}};
    for (const auto& script : scripts)
        if (character >= script.first && character <= script.last)
            return character + script.distance;
    return character;
}

char32_t _KXLowerCase(char32_t character) {
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    if (character > 0xFFFF)
        return lowerCaseOfPairs(character);
    const wchar_t upper = static_cast<wchar_t>(character);
    wchar_t lower = upper;
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &upper, 1, &lower, 1, nullptr, nullptr, 0);
    return lower;
}
