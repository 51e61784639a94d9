#include "NaturalOrder.h"

#include <algorithm>
#include <string_view>

static bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// The digits that a text begins with, without leading zeros; they are taken from it.
static std::string_view takeNumber(std::string_view& text) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
    std::string_view digits = text.substr(0, end);
    text.remove_prefix(end);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

bool comesBefore(const std::string& a, const std::string& b) {
    std::string_view left = a, right = b;
    while (!left.empty() && !right.empty()) {
        if (isDigit(left[0]) && isDigit(right[0])) {
            const std::string_view x = takeNumber(left), y = takeNumber(right);
            if (x != y)
                return x.size() != y.size() ? x.size() < y.size() : x < y;
        } else if (left[0] != right[0]) {
            return static_cast<unsigned char>(left[0]) < static_cast<unsigned char>(right[0]);
        } else {
            left.remove_prefix(1);
            right.remove_prefix(1);
        }
    }
    return left.empty() != right.empty() ? left.empty() : a < b; // such as 1 and 01
}
