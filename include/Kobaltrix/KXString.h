#pragma once

#include <Kobaltrix/KXTypes.h>
#include <Kobaltrix/KXVector3D.h>

/// @file
/// Temporary strings and the text forms of the value types.
///
/// Text that the library hands back is usually a temporary string: it belongs to a pool that KXLogicUpdate()
/// frees after every logic step. Never free one, and copy it to keep it longer. The pool may only be used on
/// the thread that runs the logic loop.

/// Formats like printf and returns the text as a temporary string, cut to 1023 bytes.
/// Null for a null @a format or when memory is exhausted.
KX_API char* KXTempString(const char* format, ...) KX_PRINTF(1, 2);

/// Keeps temporary strings alive across logic steps; calls nest.
KX_API void KXDisableTemporaryStringCleanup();
/// Undoes one KXDisableTemporaryStringCleanup(); more calls than those do nothing.
KX_API void KXEnableTemporaryStringCleanup();

KX_API const char* KXPointToString(KXPoint point);  ///< "(x, y)" with six decimals. A temporary string.
KX_API const char* KXPointToStringi(KXPoint point); ///< "(x, y)" truncated toward zero. A temporary string.
KX_API const char* KXSizeToString(KXSize size);  ///< "(width, height)" with six decimals. A temporary string.
KX_API const char* KXSizeToStringi(KXSize size); ///< "(width, height)" truncated. A temporary string.
KX_API const char* KXRectToString(KXRect rect);  ///< "{ (x, y) : (width, height) }". A temporary string.
KX_API const char* KXRectToStringi(KXRect rect); ///< The same, truncated. A temporary string.
/// "(x, y, z)" with six decimals. A temporary string.
KX_API const char* KXVector3DToString(KXVector3D vector);

/// The name of a direction ("None", "Left", … "Up Right"), "Unknown" for other values. A temporary string.
KX_API const char* KXDirectionToString(KXDirection direction);
