#pragma once

#include "platform/Sockets.h"

#include <utility>

/// The calls of the platform that a stranger can make fail. Tests put failing ones in.
struct _KXSocketCalls {
    int (*send)(int socket, const void* data, int length);
    int (*receive)(int socket, void* data, int length);
};
inline constinit _KXSocketCalls _KXSocketCall = {_KXSendBytes, _KXReceiveBytes};

/// Bytes are sent and received in pieces of at most this many.
inline constexpr int _KXSocketPiece = 1024;

/// How many failures in a row a connection survives. A few may pass, as signals do; on a broken connection
/// each call fails.
inline constexpr int _KXSocketPatience = 100;

/// Closes the socket it owns, if any.
class _KXSocketOwner {
public:
    explicit _KXSocketOwner(int socket) : _socket(socket) {}
    ~_KXSocketOwner() {
        if (_socket != -1)
            _KXCloseSocket(_socket);
    }
    _KXSocketOwner(_KXSocketOwner&& other) noexcept : _socket(other.release()) {}
    _KXSocketOwner& operator=(_KXSocketOwner&& other) noexcept {
        std::swap(_socket, other._socket);
        return *this;
    }
    int get() const { return _socket; }
    int release() { return std::exchange(_socket, -1); }

private:
    int _socket;
};

/// Sends what the system takes without waiting, and counts it in @a sent. False when the connection is no
/// longer usable.
bool _KXSendSome(int socket, const char* data, int length, int& sent);
/// Sends everything, retrying as soon as there is room while the peer does not read, for @a retryLimit
/// milliseconds (negative: for ever). Counts what was taken in @a sent. False when the connection is no
/// longer usable.
bool _KXSendAll(int socket, const char* data, int length, int retryLimit, int& sent);
