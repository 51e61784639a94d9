#include "net/Socket.h"

#include "core/ground/LogicClock.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/tcp.h>
#include <poll.h>

ssize_t _KXReceiveBytes(int socket, void* data, std::size_t length) { return recv(socket, data, length, 0); }

int _KXAcceptConnection(int socket, sockaddr* address, socklen_t* length) {
    return accept(socket, address, length);
}

static void prepare(int socket) {
    fcntl(socket, F_SETFD, FD_CLOEXEC);
    _KXSilenceSocket(socket);
    // A game's messages are small and each of them is waited for.
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void _KXMakeNonBlocking(int socket) { fcntl(socket, F_SETFL, O_NONBLOCK); }

int _KXOpenSocket() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (socket != -1)
        prepare(socket);
    return socket;
}

int _KXAccept(int listener, sockaddr_in& address) {
    socklen_t length = sizeof address;
    const int socket = _KXSocketCall.accept(listener, reinterpret_cast<sockaddr*>(&address), &length);
    if (socket != -1) {
        prepare(socket);
        _KXMakeNonBlocking(socket);
    }
    return socket;
}

// Connecting goes on by itself after connect() has returned, also when a signal has interrupted it.
static bool finishConnecting(int socket) {
    pollfd waiting = {socket, POLLOUT, 0};
    while (poll(&waiting, 1, -1) < 0)
        if (errno != EINTR)
            return false;
    int error = 0;
    socklen_t length = sizeof error;
    return getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &length) == 0 && error == 0;
}

bool _KXIsConnectedToItself(int socket) {
    sockaddr_in own = {}, peer = {};
    socklen_t ownLength = sizeof own, peerLength = sizeof peer;
    return getsockname(socket, reinterpret_cast<sockaddr*>(&own), &ownLength) == 0 &&
           getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &peerLength) == 0 &&
           own.sin_port == peer.sin_port && own.sin_addr.s_addr == peer.sin_addr.s_addr;
}

bool _KXConnect(int socket, const sockaddr_in& address) {
    _KXMakeNonBlocking(socket);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 &&
        !((errno == EINPROGRESS || errno == EINTR) && finishConnecting(socket)))
        return false;
    return !_KXIsConnectedToItself(socket);
}

bool _KXFindAddress(const char* host, int port, sockaddr_in& address) {
    if (port < 0 || port > 65535)
        return false;
    address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    if (host) {
        addrinfo hints = {}, *list = nullptr;
        hints.ai_family = AF_INET;
        hints.ai_socktype = SOCK_STREAM;
        if (getaddrinfo(host, nullptr, &hints, &list) != 0)
            return false;
        address.sin_addr = reinterpret_cast<const sockaddr_in*>(list->ai_addr)->sin_addr;
        freeaddrinfo(list);
    }
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return true;
}

bool _KXWouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK; }

// Interrupted, or the system is short of memory for a moment.
static bool passesByItself() { return errno == EINTR || errno == ENOBUFS; }

// Sleeps until the peer has read something, for a moment at most: spinning would take from the peer, where it
// runs on the same machine, the time to read.
static void awaitRoom(int socket) {
    pollfd waiting = {socket, POLLOUT, 0};
    poll(&waiting, 1, 1);
}

bool _KXSendAll(int socket, const char* data, int length, int retryLimit, int& sent) {
    int failures = 0;
    bool refused = false;
    std::uint32_t firstRefusal = 0;
    for (sent = 0; sent < length;) {
        const auto piece = static_cast<std::size_t>(std::min(_KXSocketPiece, length - sent));
        const ssize_t count = _KXSocketCall.send(socket, data + sent, piece);
        if (count > 0) {
            sent += static_cast<int>(count);
            failures = 0;
        } else if (count < 0 && _KXWouldBlock()) {
            awaitRoom(socket);
            if (retryLimit < 0)
                continue;
            const std::uint32_t now = _KXTicks();
            if (!refused)
                firstRefusal = now;
            refused = true;
            if (now - firstRefusal >= static_cast<std::uint32_t>(retryLimit))
                return false;
        } else if ((count < 0 && !passesByItself()) || ++failures == _KXSocketPatience) {
            return false;
        }
    }
    return true;
}
