#pragma once

#include <Kobaltrix/KXUITheme.h>

/// The theme that was set last.
inline constinit KXUITheme _KXTheme;

inline bool _KXCaptionsAreLaidOut() { return _KXTheme.captions == KXUICaptionsLaidOut; }
