#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The byte buffer in which a message is composed before it is sent, and from which a received one is read.
///
/// Values carry no tag, type or separator: the reader reads in the order in which the writer appended. A long
/// and a float take #KXNetworkBufferLongSize bytes each. Of a long only the low 32 bits travel, one 4-bit
/// nibble per byte, lowest first. A float travels as the 4 bytes of its IEEE-754 single in host byte order
/// and 4 zero bytes.

/// How many bytes one long or one float takes in a buffer: 8.
extern KX_API const int KXNetworkBufferLongSize;

/// Writes the 8 bytes of a long at @a destination. Null does nothing.
KX_API void KXNetworkBufferPutL(char* destination, long value);
/// Reads a long from the 8 bytes at @a source, as a signed number of 32 bits; 0 for null. Bytes above 0x0F,
/// which no sender writes, run into the nibbles above them.
KX_API long KXNetworkBufferGetL(const char* source);
/// Writes the 4 bytes of a float at @a destination. Null does nothing.
KX_API void KXNetworkBufferPutF(char* destination, float value);
/// Reads a float from the 4 bytes at @a source; 0 for null.
KX_API float KXNetworkBufferGetF(const char* source);

/// A growable run of bytes with a position of the next read. Appending takes constant time on average.
///
/// A buffer holds at most 2147483647 bytes; appending beyond that, or beyond the memory there is, throws
/// std::bad_alloc and leaves the buffer as it was.
class KX_API KXNetworkBuffer {
public:
    /// An empty buffer.
    KXNetworkBuffer() = default;
    /// A buffer that holds a copy of @a length bytes; empty if @a data is null or @a length is below 1.
    KXNetworkBuffer(const char* data, int length);
    ~KXNetworkBuffer();
    KXNetworkBuffer(const KXNetworkBuffer&) = delete;
    KXNetworkBuffer& operator=(const KXNetworkBuffer&) = delete;

    /// Appends @a length bytes as they are: no length goes with them, and no terminator unless @a length
    /// counts it. Null, or a length below 1, appends nothing.
    void appendString(const char* data, int length);
    /// Appends the low 32 bits of a number.
    void appendLong(long value);
    /// Appends a float.
    void appendFloat(float value);

    /// Starts reading again from the beginning.
    void resetReadIndex();
    /// Reads a run of bytes. Never more of them than the whole buffer holds, but what is left after the read
    /// position is not looked at: bytes past the end read as zeros and the position moves on over them.
    /// @return a block of exactly that many bytes, without a terminator, that the caller frees with free();
    ///   null only when memory is exhausted.
    char* readString(int length);
    /// Reads a run of bytes as readString() does. @return the text in it up to its first zero byte, as a
    /// temporary string (and so cut to 1023 bytes).
    const char* readStringTemp(int length);
    /// Reads a number of 32 bits, signed; what lies past the end reads as zeros.
    long readLong();
    /// Reads a float; what lies past the end reads as zeros.
    float readFloat();

    /// A copy of all bytes, read or not. The caller frees it with free(); null only when memory is exhausted.
    char* buffer() const;
    /// How many bytes the buffer holds, read or not.
    int bufferLength() const;
    /// Whether the read position has not reached the end.
    bool hasMoreData() const;
    /// The length and the read position as a text for logs. A temporary string.
    const char* description() const;

    KX_LIBRARY_ONLY
    KX_INTERNAL const char* _bytes() const { return _buf; }
    KX_INTERNAL bool _wasReadBeyondEnd() const { return _readIndex > _bufLen; }
    KX_INTERNAL void _reserve(int length);

private:
    KX_INTERNAL char* _grow(int length);
    KX_INTERNAL int _held(int wanted) const;
    KX_INTERNAL void _advance(int length);
    KX_INTERNAL void _readSlot(char* slot);

    int _readIndex = 0;
    int _bufLen = 0;
    char* _buf = nullptr;
    int _capacity = 0;
};

/// A new buffer that holds the bytes of the first followed by those of the second, for the caller to delete.
/// Both stay as they are; null counts as empty.
KX_API KXNetworkBuffer* KXNetworkMergeBuffers(const KXNetworkBuffer* first, const KXNetworkBuffer* second);
