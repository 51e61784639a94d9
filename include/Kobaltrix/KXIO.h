#pragma once

#include <Kobaltrix/KXTypes.h>

#include <stdio.h>

/// @file
/// Values in files, and one set of calls that stores them either in a file or in a network message.
///
/// On a file every number takes 4 bytes, lowest byte first, whatever the machine: an integer as two's
/// complement, a float as its IEEE-754 single. Nothing here seeks, flushes or closes a stream; numbers do not
/// lock it either, so use a stream from one thread only. Where a float is made an integer it is truncated
/// toward zero, not-a-number becomes 0 and what is out of range becomes the nearest that fits. Failures show
/// in the results alone: nothing is logged, and a value partly written stays so. A null stream fails like a
/// full one and reads like an empty one. Where a stream ends too early, floats read as 0.0 and integers as
/// -1. Whether anything was lost is best asked once, with KXStreamIsIntact() after the last value; a file
/// that replaces another is best written through KXSaveFile.

class KXNetworkBuffer;

/// Writes the low 32 bits of a number. @return the number, or -1 if a byte could not be written (the bytes
/// after it are not tried); -1 is also the result of writing -1.
KX_API long KXPutL(long value, FILE* file);
/// Reads a number. @return 0 to 4294967295, or -1 if the stream ends within it. Convert the result to a
/// signed int of 32 bits to get negative numbers back. Where a long has 32 bits itself, as on Windows,
/// numbers from 2147483648 on come as negative ones, and whether the stream has ended KXStreamIsIntact()
/// tells; code that converts the result works everywhere.
KX_API long KXGetL(FILE* file);
/// Writes a float. @return its value truncated to a long, or -1 if a byte could not be written. Too large a
/// value gives the largest float that a long holds.
KX_API long KXPutF(float value, FILE* file);
/// Reads a float; 0.0 if the stream ends within it.
KX_API float KXGetF(FILE* file);

/// Writes x and y as floats. @return false if either KXPutF() returned -1 in its low 32 bits: on failure, and
/// also for a coordinate that truncates to -1, which is written all the same.
KX_API bool KXPutPoint(KXPoint point, FILE* file);
/// Reads a point.
KX_API KXPoint KXGetPoint(FILE* file);
/// Writes width and height as integers. @return false if either KXPutL() returned -1 in its low 32 bits: on
/// failure, and also for an extent that truncates to -1, which is written all the same.
KX_API bool KXPutSize(KXSize size, FILE* file);
/// Reads a size: two signed integers.
KX_API KXSize KXGetSize(FILE* file);
/// Writes the origin as two floats and the size as two integers: a rectangle keeps the fraction of its
/// position but not of its extent. @return always true; ask KXStreamIsIntact() for failures.
KX_API bool KXPutRect(KXRect rect, FILE* file);
/// Reads a rectangle.
KX_API KXRect KXGetRect(FILE* file);
/// Writes red, green, blue and alpha as floats. @return whether the stream's error flag is clear afterwards.
KX_API bool KXPutColor(KXColor color, FILE* file);
/// Reads a colour.
KX_API KXColor KXGetColor(FILE* file);

/// Writes a text: its length with the terminator as an integer, then that many bytes. A null text is written
/// as the length 0. @return whether the stream's error flag is clear afterwards; false with nothing written
/// for a text of 2 GiB.
KX_API bool KXPutString(const char* string, FILE* file);
/// Reads a text. @return it as a temporary string (so cut to 1023 bytes, though all of it is read); null if
/// its length is below 1 or cannot be read, and while the stream's error flag is set. A text that the end of
/// the stream cuts short is returned as far as it goes.
KX_API char* KXGetString(FILE* file);

/// Whether nothing was lost that was put on a stream or read from it until now. What was put goes to the
/// system first, as fflush() does.
/// @return -1 if all of it was written and no value read lies beyond the end of the stream, even in part; 0
/// if
///   not, and for null. It stays 0 until clearerr() or rewind().
KX_API int KXStreamIsIntact(FILE* file);

/// Where the KXIO… functions write to and read from; make one with KXIOBufferWith(). It is passed by value
/// and owns nothing.
struct KXIOBuffer {
    void* target; ///< The FILE* or the KXNetworkBuffer*; with null every operation does nothing.
    int kind;     ///< 0: a FILE*. 1: a KXNetworkBuffer*. With any other kind every operation does nothing.
};

/// Chooses the target: @a file unless it is null, otherwise @a buffer (even when that is null too). The bytes
/// in a file and in a network buffer differ; only the calls are the same.
KX_API KXIOBuffer KXIOBufferWith(FILE* file, KXNetworkBuffer* buffer);

KX_API void KXIOPutL(long value, KXIOBuffer io);        ///< KXPutL() or KXNetworkBuffer::appendLong().
KX_API void KXIOPutF(float value, KXIOBuffer io);       ///< KXPutF() or KXNetworkBuffer::appendFloat().
KX_API void KXIOPutPoint(KXPoint point, KXIOBuffer io); ///< KXPutPoint() or two floats.
KX_API void KXIOPutColor(KXColor color, KXIOBuffer io); ///< KXPutColor() or four floats.
/// KXPutString(), or its length with the terminator as a long and then that many bytes; a null text is
/// written as the length 0.
KX_API void KXIOPutString(const char* string, KXIOBuffer io);

/// KXGetL() or KXNetworkBuffer::readLong(): from a buffer the number comes with its sign, from a file
/// without, where a long has more than 32 bits. 0 when there is no target.
KX_API long KXIOGetL(KXIOBuffer io);
KX_API float KXIOGetF(KXIOBuffer io);       ///< KXGetF() or KXNetworkBuffer::readFloat(); 0 without a target.
KX_API KXPoint KXIOGetPoint(KXIOBuffer io); ///< KXGetPoint() or two floats; zeros without a target.
KX_API KXColor KXIOGetColor(KXIOBuffer io); ///< KXGetColor() or four floats; zeros without a target.
/// KXGetString() or the text that KXIOPutString() put into the buffer. A temporary string; null if the length
/// is below 1 and without a target.
KX_API char* KXIOGetString(KXIOBuffer io);

/// KXStreamIsIntact(), or whether no value read from the buffer lies beyond its end, even in part; 0 without
/// a target. A buffer loses nothing that is put into it.
KX_API int KXIOIsIntact(KXIOBuffer io);
