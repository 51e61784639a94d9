#pragma once

#include "net/ByteQueue.h"

#include <Kobaltrix/KXNetworkHandler.h>

#include <map>
#include <queue>

/// What follows every message on a stream.
inline constexpr char _KXEndOfBuffer[] = "_KXEOB";
inline constexpr int _KXEndOfBufferLength = sizeof _KXEndOfBuffer; ///< The zero byte is part of it.

/// The bytes of one connection that have not been handed out. Each is searched for the marker once.
class StoredBufferInfo {
public:
    int length() const { return _bytes.length(); }
    const char* bytes() const { return _bytes.bytes(); }
    int capacity() const { return _bytes.capacity(); }

    /// Where up to @a wanted bytes may be written that added() then takes in. Throws std::bad_alloc.
    char* room(int wanted) { return _bytes.room(wanted); }
    void added(int count) { _bytes.added(count); }
    void append(const char* data, int length) { _bytes.append(data, length); }

    /// Searches what was added since the last time. False if a message is longer than @a longest, or will be;
    /// those before it are found, and what is behind them is not looked at.
    bool findMessages(int longest);
    bool hasMessage() const { return !_lengths.empty(); }
    /// Takes the first of the messages found out of the store; null if there is none. Throws std::bad_alloc.
    KXNetworkBuffer* takeMessage();

private:
    int _begunMarker() const;

    ByteQueue _bytes;
    // Counted from the first byte held.
    int _searched = 0;        // no marker begins before it but those found
    int _unfinished = 0;      // behind the last marker found
    std::queue<int> _lengths; // of the messages found, without their markers
};

/// An entry without bytes counts as none; it keeps a little room, so that a message that comes whole needs no
/// memory of its own here.
struct _KXNetworkHandler::StoredBuffers {
    std::map<int, StoredBufferInfo> byClientID;
};
