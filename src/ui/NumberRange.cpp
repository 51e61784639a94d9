#include "ui/NumberRange.h"

#include "platform/Locale.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

static constexpr double furthest = 1e15; // where a double still counts in quarters

static double sensible(double number) {
    return number == number ? std::clamp(number, -furthest, furthest) : 0;
}

_KXNumberRange _KXNumberRange::of(double from, double to, double step) {
    const double begin = sensible(from);
    return {begin, std::max(begin, sensible(to)), std::max(0.0, sensible(step))};
}

double _KXNumberRange::within(double number) const {
    return number == number ? std::clamp(number, from, to) : from;
}

double _KXNumberRange::nearest(double number) const {
    const double inside = within(number);
    if (!(step > 0))
        return inside;
    const double below = from + std::floor((inside - from) / step) * step, above = std::min(below + step, to);
    return within(inside - below < above - inside ? below : above);
}

std::string _KXShortNumberText(double number) {
    constexpr int mostDecimals = 5;
    std::string text = _KXNumberText(number, mostDecimals);
    text.erase(text.find_last_not_of('0') + 1);
    return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

std::string _KXNumberText(double number, int decimals) {
    char text[64]; // the furthest number has 16 digits
    std::snprintf(text, sizeof text, "%.*f", decimals, number);
    std::string written = text;
    // Locales have other decimal signs, of one byte and more.
    const std::size_t whole = std::min(written.size(), written.find_first_not_of("-0123456789"));
    const std::size_t part = std::min(written.size(), written.find_first_of("0123456789", whole));
    written.replace(whole, part - whole, part > whole ? "." : "");
    return written.find_first_of("123456789") == written.npos && written[0] == '-' ? written.substr(1)
                                                                                   : written; // no "-0"
}

static std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool _KXReadNumber(const char* text, const char* suffix, double& number) {
    std::string_view rest = trimmed(text);
    if (const std::string_view end = trimmed(suffix); !end.empty() && rest.ends_with(end))
        rest = trimmed(rest.substr(0, rest.size() - end.size()));
    std::string digits(rest);
    std::ranges::replace(digits, ',', '.');
    const std::size_t sign = digits.starts_with('-') || digits.starts_with('+') ? 1 : 0;
    if (digits.find_first_not_of("0123456789.", sign) != digits.npos ||
        digits.find_first_of("0123456789") == digits.npos || std::ranges::count(digits, '.') > 1)
        return false;
    number = _KXNumberIn(digits.c_str()); // infinite where there are too many
    return true;
}
