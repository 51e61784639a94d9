#pragma once

#include "text/FontCache.h"

#include <Kobaltrix/KXUIGlobalFont.h>

inline constinit char* _KXUIGlobalFontPath = nullptr;              ///< Owned; null while no font was set.
inline constinit KXAliasMode _KXUIGlobalFontMode = KXAliasMode(0); ///< As it was set.
inline constinit KXPoint _KXUIGlobalFontOffset = {0, 0};           ///< At every size.

/// The global font at a size, from the global cache, with the global offset. Null while no font was set or
/// the cache has none to give.
KXFont* _KXUIGlobalFontWithSize(int size);

/// Forgets the font and frees its path, as before the first KXUISetGlobalFont().
void _KXUIForgetGlobalFont();

// What the public functions do, with a given font; null draws nothing and measures 0.
void _KXUIGlobalFontPrint(KXFont* font, KXPoint p, KXColor c, const char* text);
int _KXUIGlobalFontLineHeight(KXFont* font);
int _KXUIGlobalFontDescender(KXFont* font);
KXSize _KXUIGlobalFontStringBounds(KXFont* font, const char* text);
KXPoint _KXUIGlobalFontRenderingOffset(KXFont* font);
