#pragma once

#include <string>

/// Tells fontconfig which fonts there are, where it does not know by itself. Call it before fontconfig is
/// asked for one; the first call does it.
void _KXLoadSystemFonts();

/// A path as fontconfig has it, as one of the library.
std::string _KXFontPath(const char* path);
