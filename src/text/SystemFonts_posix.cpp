#include "text/SystemFonts.h"

// The system has settings for it.
void _KXLoadSystemFonts() {}
