#pragma once

#include <limits>

/// Float to int, truncated toward zero; values an int cannot hold saturate and not-a-number becomes 0,
/// because the plain conversion would be undefined for them.
constexpr int _KXTruncate(double value) {
    if (value != value)
        return 0;
    if (value >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}
