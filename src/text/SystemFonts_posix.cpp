#include "text/SystemFonts.h"

// The system has settings for it.
void _KXLoadSystemFonts() {}

std::string _KXFontPath(const char* path) { return path; }
