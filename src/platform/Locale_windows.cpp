#include "platform/Locale.h"

#include <clocale>
#include <cstdlib>

#include <windows.h>

double _KXNumberIn(const char* text) {
    static const _locale_t plain = _create_locale(LC_ALL, "C");
    return _strtod_l(text, nullptr, plain);
}

char32_t _KXLowerCase(char32_t character) {
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    if (character > 0xFFFF) // the system's tables end there
        return character;
    const wchar_t upper = static_cast<wchar_t>(character);
    wchar_t lower = upper;
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &upper, 1, &lower, 1, nullptr, nullptr, 0);
    return lower;
}
