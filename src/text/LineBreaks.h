#pragma once

/// Whether a character ends a line.
inline bool _KXIsLineBreak(char32_t c) {
    return (c >= '\n' && c <= '\r') || c == 0x85 || c == 0x2028 || c == 0x2029;
}

/// Whether a character is of the old kind that steers terminals; those that end lines are, too.
inline bool _KXIsControl(char32_t c) { return c < ' ' || (c >= 0x7F && c <= 0x9F); }
