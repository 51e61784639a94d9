#pragma once

#include "net/ByteQueue.h"
#include "net/Socket.h"

#include <Kobaltrix/KXNetworkLimits.h>

#include <cstdint>
#include <utility>

class KXNetworkBuffer;

/// A connection with what waits to leave by it.
class _KXConnection {
public:
    _KXConnection() : _KXConnection(_KXSocketOwner(-1)) {}
    explicit _KXConnection(_KXSocketOwner socket) : _socket(std::move(socket)) {}

    int socket() const { return _socket.get(); }
    /// Gives the socket up without closing it.
    void release() { _socket.release(); }

    /// Sends bytes behind those that wait, and waits or lets them wait as the limits say. Counts in @a sent
    /// what the system or the queue took; nothing of null. False when the connection is no longer usable.
    bool send(const void* data, int length, const KXNetworkLimits& limits, int& sent);
    /// Sends what waits, as far as the system takes it now. False when the connection is no longer usable.
    bool flush();
    int waiting() const { return _outgoing.length(); }

    _KXSocketAddress peer;
    bool closed = false;          ///< By the peer; what it sent before may still be asked for.
    bool hasSpoken = false;       ///< Whether a message of the peer was handed out.
    std::uint64_t lastSpoken = 0; ///< When one was, or when it came; in milliseconds of the turns.

private:
    bool _queue(const char* data, int length);

    _KXSocketOwner _socket;
    ByteQueue _outgoing;
};

/// What came of one receive.
struct _KXReceived {
    KXNetworkBuffer* message = nullptr;
    bool lost = false; ///< The connection has ended.
    bool more = false; ///< Asking again may bring another message, even if nothing else arrives.
};
