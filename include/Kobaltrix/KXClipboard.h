#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The system's clipboard.

/// The text on the clipboard in UTF-8, empty if it holds none. Its lines end with a newline on
/// every system. Lives until the next call.
KX_API const char* KXClipboardText();
/// Puts a text in UTF-8 on the clipboard; null and an empty one empty it.
/// @return -1, or 0 with a text in KXError() if the system refuses.
KX_API int KXSetClipboardText(const char* text);
