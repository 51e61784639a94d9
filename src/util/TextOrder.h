#pragma once

#include <string>

// How people look texts up: upper case and lower case are the same letter, and "file 10" comes after "file
// 9".

/// @a text in lower case, in every script that has one. Bytes that are not UTF-8 become question marks.
std::string _KXFoldedText(const char* text);

/// Whether @a text begins with @a prefix, which _KXFoldedText() made, in any case.
bool _KXBeginsWith(const char* text, const char* prefix);

/// A text whose byte-wise order among others is the order people expect of @a text: in any case, numbers by
/// their value, letters with accents beside those without.
std::string _KXNaturalSortKey(const char* text);
