#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The one font that every widget uses unless it is given its own. Set it after KXInit(), with its window as
/// the render context, and before the first widget is made. Without one, printing does nothing and every
/// measure is 0.
///
/// The forms without a size use the font that KXUISetGlobalFont() found, until KXClearGUIFontCache(). Those
/// with a size in points look it up for the current window at each call and load it at the first. Both come
/// from the font cache, so they are at another size where a widget that shares the font has changed it with
/// setFontSize(). Heights, descenders and bounds are pixels, rounded up to whole ones.

/// Sets the font of the user interface. Widgets made before keep theirs.
/// @param path the font file, copied; null for no font. @param mode how glyphs are drawn. @param size points.
/// @param offset pixels by which text is moved right and down, at every size. Widgets that are given the same
/// file and mode with setFont() share the font, and so the offset.
/// @return -1. When a file that cannot be loaded is first asked for, "Unable to set font face size" is in
/// KXError().
KX_API int KXUISetGlobalFont(const char* path, KXAliasMode mode, int size, KXPoint offset);

/// Prints a text with its top-left corner at @a p. Colour spans work as in KXFont::print(), and so does the
/// limit of 1023 bytes. The text is a format without arguments: `%%` prints one percent sign, a single one
/// stands as it is.
KX_API void KXUIGlobalFontPrint(KXPoint p, KXColor c, const char* text);
/// Prints a text at a size of @a size points.
KX_API void KXUIGlobalFontPrint(KXPoint p, KXColor c, int size, const char* text);

KX_API int KXUIGlobalFontLineHeight();         ///< Pixels from one line to the next.
KX_API int KXUIGlobalFontLineHeight(int size); ///< Pixels from one line to the next at a size.
KX_API int KXUIGlobalFontDescender();          ///< Pixels from the baseline to the bottom, zero or negative.
KX_API int KXUIGlobalFontDescender(int size);  ///< The same at a size.

/// Pixels of the box around a text's ink, colour spans not counted, as KXFont::stringBounds() measures it.
///
/// The text is no format here: `%%` measures as the two signs that it is, although it prints as one. To
/// centre such a text, measure it with `%` and print it with `%%`.
KX_API KXSize KXUIGlobalFontStringBounds(const char* text);
/// Pixels of the box around a text's ink at a size of @a size points.
KX_API KXSize KXUIGlobalFontStringBounds(int size, const char* text);

KX_API KXPoint KXUIGlobalFontRenderingOffset();         ///< Pixels by which text is moved right and down.
KX_API KXPoint KXUIGlobalFontRenderingOffset(int size); ///< The same at a size.
