#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <cstddef>

/// Size of the error slot in bytes, terminator included.
inline constexpr std::size_t _KXErrorSize = 512;

/// Formats a message into the error slot that KXError() returns, cutting it to 511 bytes.
void _KXSetError(const char* format, ...) KX_PRINTF(1, 2);

/// Reports a failure: formats the message, then uses the result once more as a format without arguments,
/// which is what a percent sign in a path or in the platform's own text goes through.
void _KXReportError(const char* format, ...) KX_PRINTF(1, 2);

/// Empties the error slot.
void _KXClearError();

/// Copies @a format to @a out as printf would print it without any argument: "%%" becomes "%", and a
/// conversion, having nothing to convert, stands as it is. Never reads an argument. The result is cut to
/// @a size bytes with its terminator; @a out may not overlap @a format. Every text of the game's own that is
/// used as a format goes through here.
void _KXFormatWithoutArguments(char* out, std::size_t size, const char* format);
