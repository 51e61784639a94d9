#pragma once

#include "input/StepInput.h"
#include "platform/Desktop.h"

// What people press on their desktop: Control here is Command on macOS, and there Option steps by words.

/// Whether a letter with these is a shortcut. Control with Alt makes letters on some layouts.
inline bool _KXIsShortcut(const _KXModifiers& held) {
    return (held.command || (held.control && !_KXIsMac)) && !held.alt;
}
/// Whether the cursor goes by words.
inline bool _KXGoesByWords(const _KXModifiers& held) { return _KXIsMac ? held.alt : held.control; }
/// Whether Left and Right go to the ends of the line.
inline bool _KXGoesToEnds(const _KXModifiers& held) { return _KXIsMac && held.command; }
