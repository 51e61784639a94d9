#pragma once

#include <Kobaltrix/KXUITheme.h>

/// The theme that was set last.
inline constinit KXUITheme _KXTheme;
/// How often one was set.
inline constinit unsigned _KXThemeRevision = 0;
/// The theme's font, while the cache that it is of has not been cleared; null without one.
KXFont* _KXThemeFont();

inline bool _KXCaptionsAreLaidOut() { return _KXTheme.captions == KXUICaptionsLaidOut; }
