#pragma once

// What does not depend on the locale that the game or its user has chosen.

/// The number that a text begins with, read as std::strtod does with a decimal point; 0 if there is none.
double _KXNumberIn(const char* text);

/// A character in lower case, in every script that has one.
char32_t _KXLowerCase(char32_t character);
