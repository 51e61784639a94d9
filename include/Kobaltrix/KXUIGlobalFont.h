#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The one font that every widget uses unless it is given its own. Set it after KXInit() and before the first
/// widget is made. Without one, printing does nothing and every measure is 0.
///
/// A size is given in points; the forms without a size use the one given to KXUISetGlobalFont(). Measures are
/// pixels, rounded up.

/// Sets the font of the user interface. Widgets made before keep theirs.
/// @param path the font file, copied; null for no font. @param mode how glyphs are drawn. @param size points.
/// @param offset pixels by which text is moved right and down, at every size.
/// @return -1. A file that cannot be loaded shows as "Unable to set font face size" in KXError().
KX_API int KXUISetGlobalFont(const char* path, KXAliasMode mode, int size, KXPoint offset);

/// Prints a text with its top-left corner at @a p. Colour spans work as in KXFont::print(). A percent sign
/// must be written as two; a single one stands as it is, and the text is cut to 1023 bytes.
KX_API void KXUIGlobalFontPrint(KXPoint p, KXColor c, const char* text);
/// Prints a text at a size of @a size points.
KX_API void KXUIGlobalFontPrint(KXPoint p, KXColor c, int size, const char* text);

KX_API int KXUIGlobalFontLineHeight();         ///< Pixels from one line to the next.
KX_API int KXUIGlobalFontLineHeight(int size); ///< Pixels from one line to the next at a size.
KX_API int KXUIGlobalFontDescender();          ///< Pixels from the baseline to the bottom, zero or negative.
KX_API int KXUIGlobalFontDescender(int size);  ///< The same at a size.

/// Pixels that the ink of a text covers, colour spans not counted.
KX_API KXSize KXUIGlobalFontStringBounds(const char* text);
/// Pixels that the ink of a text covers at a size of @a size points, colour spans not counted.
KX_API KXSize KXUIGlobalFontStringBounds(int size, const char* text);

KX_API KXPoint KXUIGlobalFontRenderingOffset();         ///< Pixels by which text is moved right and down.
KX_API KXPoint KXUIGlobalFontRenderingOffset(int size); ///< The same at a size.
