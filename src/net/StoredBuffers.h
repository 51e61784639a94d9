#pragma once

#include <Kobaltrix/KXNetworkHandler.h>

#include <cstdint>
#include <map>
#include <memory>
#include <queue>

/// What follows every message on a stream.
inline constexpr char _KXEndOfBuffer[] = "_KXEOB";
inline constexpr int _KXEndOfBufferLength = sizeof _KXEndOfBuffer; ///< The zero byte is part of it.

/// How many bytes have been moved and how many looked at since the program began. Both must stay in
/// proportion to the bytes received, which no clock could tell reliably.
struct _KXNetworkWork {
    std::uint64_t copied;
    std::uint64_t searched;
};
inline constinit _KXNetworkWork _KXNetworkWorkDone = {0, 0};

/// The bytes of one connection that have not been handed out.
///
/// They come in at the end and leave at the front without moving the rest, and each is searched for the
/// marker once.
class StoredBufferInfo {
public:
    int length() const { return _end - _begin; }
    const char* bytes() const { return _buffer.get() + _begin; }
    int capacity() const { return _capacity; }

    /// Where up to @a wanted bytes may be written that added() then takes in. Throws std::bad_alloc.
    char* room(int wanted);
    void added(int count) { _end += count; }
    void append(const char* data, int length);

    /// Searches what was added since the last time. False if a message is longer than @a longest, or will be.
    bool findMessages(int longest);
    bool hasMessage() const { return !_lengths.empty(); }
    /// Takes the first of the messages found out of the store; null if there is none. Throws std::bad_alloc.
    KXNetworkBuffer* takeMessage();

private:
    bool _moveTo(int capacity);
    void _release();

    std::unique_ptr<char[]> _buffer;
    int _capacity = 0;
    int _begin = 0;           // the first byte not handed out
    int _searched = 0;        // no marker begins before it but those found
    int _unfinished = 0;      // behind the last marker found
    int _end = 0;             // behind the last byte
    std::queue<int> _lengths; // of the messages found, without their markers
};

/// An entry without bytes counts as none; it keeps a little room, so that a message that comes whole needs no
/// memory of its own here.
struct _KXNetworkHandler::StoredBuffers {
    std::map<int, StoredBufferInfo> byClientID;
};
