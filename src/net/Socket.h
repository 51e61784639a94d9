#pragma once

#include "net/SocketSignals.h"

#include <cstddef>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <unistd.h>

/// The system's calls that a stranger can make fail. Tests put failing ones in.
struct _KXSocketCalls {
    ssize_t (*send)(int socket, const void* data, std::size_t length);
    ssize_t (*receive)(int socket, void* data, std::size_t length);
    int (*accept)(int socket, sockaddr* address, socklen_t* length);
};
ssize_t _KXReceiveBytes(int socket, void* data, std::size_t length);
int _KXAcceptConnection(int socket, sockaddr* address, socklen_t* length);
inline constinit _KXSocketCalls _KXSocketCall = {_KXSendSilently, _KXReceiveBytes, _KXAcceptConnection};

/// Bytes are sent and received in pieces of at most this many.
inline constexpr int _KXSocketPiece = 1024;

/// How many failures in a row a connection survives: some pass by themselves, and a dead one repeats its own
/// for ever.
inline constexpr int _KXSocketPatience = 100;

/// Closes the socket it owns, if any.
class _KXSocketOwner {
public:
    explicit _KXSocketOwner(int socket) : _socket(socket) {}
    ~_KXSocketOwner() {
        if (_socket != -1)
            close(_socket);
    }
    _KXSocketOwner(const _KXSocketOwner&) = delete;
    _KXSocketOwner& operator=(const _KXSocketOwner&) = delete;
    int get() const { return _socket; }
    int release() {
        const int socket = _socket;
        _socket = -1;
        return socket;
    }

private:
    int _socket;
};

/// A new TCP socket (IPv4) that programs started by the game do not inherit; -1 on failure.
int _KXOpenSocket();
/// Accepts a connection: its socket, non-blocking; -1 if there is none or it cannot be accepted now.
int _KXAccept(int listener, sockaddr_in& address);
/// Connects, waiting for the outcome, and makes the socket non-blocking.
bool _KXConnect(int socket, const sockaddr_in& address);
/// Whether a connection has no other end: searching a port that nobody listens at for a local client, the
/// system may give it that very port and connect it to itself.
bool _KXIsConnectedToItself(int socket);
/// Sets the status flags of a socket to non-blocking alone.
void _KXMakeNonBlocking(int socket);
/// Looks a name or a dotted address up; null stands for any address. False if it is unknown or has no IPv4
/// address, or if the port is none.
bool _KXFindAddress(const char* host, int port, sockaddr_in& address);

/// Whether the call that just failed did so only because there is nothing to read or no room to write.
bool _KXWouldBlock();
/// Sends everything, retrying as soon as there is room while the peer does not read, for @a retryLimit
/// milliseconds (negative: for ever). Counts what was taken in @a sent. False when the connection is no
/// longer usable.
bool _KXSendAll(int socket, const char* data, int length, int retryLimit, int& sent);
