#include "platform/Sockets.h"

#include "platform/SocketOptions.h"
#include "platform/SystemSockets.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <unistd.h>

void _KXStartSockets() {}

static void set(int socket, int level, int option, int value) {
    setsockopt(socket, level, option, &value, sizeof value);
}

static void prepare(int socket) {
    fcntl(socket, F_SETFD, FD_CLOEXEC);
    _KXSilenceSocket(socket);
    // A game's messages are small and each of them is waited for.
    set(socket, IPPROTO_TCP, TCP_NODELAY, 1);
}

int _KXOpenSocket(const _KXSocketAddress& address) {
    const int socket = ::socket(address.isIPv4() ? AF_INET : AF_INET6, SOCK_STREAM, IPPROTO_TCP);
    if (socket != -1)
        prepare(socket);
    return socket;
}

void _KXCloseSocket(int socket) { close(socket); }

void _KXMakeNonBlocking(int socket) { fcntl(socket, F_SETFL, O_NONBLOCK); }

void _KXKeepAlive(int socket, int seconds) {
    constexpr int questions = 3;
    set(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
    set(socket, IPPROTO_TCP, _KXKeepAliveTime, seconds);
    set(socket, IPPROTO_TCP, TCP_KEEPINTVL, std::max(seconds / questions, 1));
    set(socket, IPPROTO_TCP, TCP_KEEPCNT, questions);
}

bool _KXBind(int socket, _KXSocketAddress& address) {
    set(socket, SOL_SOCKET, SO_REUSEADDR, 1);
    if (!address.isIPv4())
        set(socket, IPPROTO_IPV6, IPV6_V6ONLY, 0);
    sockaddr_storage bound;
    socklen_t length = _KXToSystem(address, bound);
    if (bind(socket, reinterpret_cast<const sockaddr*>(&bound), length) != 0)
        return false;
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &length) == 0)
        address.port = _KXFromSystem(bound).port;
    return true;
}

bool _KXListen(int socket, int backlog) { return listen(socket, backlog) == 0; }

int _KXAccept(int listener, _KXSocketAddress& peer) {
    sockaddr_storage from = {};
    socklen_t length = sizeof from;
    const int socket = accept(listener, reinterpret_cast<sockaddr*>(&from), &length);
    if (socket != -1) {
        peer = _KXFromSystem(from);
        prepare(socket);
        _KXMakeNonBlocking(socket);
    }
    return socket;
}

static bool isConnectedToItself(int socket) {
    sockaddr_storage own = {}, peer = {};
    socklen_t ownLength = sizeof own, peerLength = sizeof peer;
    return getsockname(socket, reinterpret_cast<sockaddr*>(&own), &ownLength) == 0 &&
           getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &peerLength) == 0 &&
           _KXFromSystem(own) == _KXFromSystem(peer);
}

_KXConnecting _KXBeginConnecting(int socket, const _KXSocketAddress& address) {
    _KXMakeNonBlocking(socket);
    sockaddr_storage peer;
    const socklen_t length = _KXToSystem(address, peer);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&peer), length) == 0)
        return isConnectedToItself(socket) ? _KXConnecting::failed : _KXConnecting::done;
    // It goes on by itself after connect() has returned, also when a signal has interrupted it.
    return errno == EINPROGRESS || errno == EINTR ? _KXConnecting::pending : _KXConnecting::failed;
}

static _KXConnecting outcomeWithin(int socket, int milliseconds) {
    pollfd waiting = {socket, POLLOUT, 0};
    const int ready = poll(&waiting, 1, milliseconds);
    if (ready == 0 || (ready < 0 && errno == EINTR))
        return _KXConnecting::pending;
    int error = 0;
    socklen_t length = sizeof error;
    const bool connected =
        ready > 0 && getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &length) == 0 && error == 0;
    return connected && !isConnectedToItself(socket) ? _KXConnecting::done : _KXConnecting::failed;
}

_KXConnecting _KXCheckConnecting(int socket) { return outcomeWithin(socket, 0); }

bool _KXConnect(int socket, const _KXSocketAddress& address) {
    _KXConnecting outcome = _KXBeginConnecting(socket, address);
    while (outcome == _KXConnecting::pending)
        outcome = outcomeWithin(socket, -1);
    return outcome == _KXConnecting::done;
}

_KXSocketFailure _KXSocketFailureOf(int error) {
    if (error == EAGAIN || error == EWOULDBLOCK)
        return _KXSocketWouldBlock;
    return error == EINTR || error == ENOBUFS ? _KXSocketInterrupted : _KXSocketBroken;
}

static int bytesOrFailure(long count) {
    return count < 0 ? _KXSocketFailureOf(errno) : static_cast<int>(count);
}

int _KXSendBytes(int socket, const void* data, int length) {
    return bytesOrFailure(_KXSendSilently(socket, data, static_cast<std::size_t>(length)));
}

int _KXReceiveBytes(int socket, void* data, int length) {
    return bytesOrFailure(recv(socket, data, static_cast<std::size_t>(length), 0));
}

void _KXAwaitRoom(int socket) {
    pollfd waiting = {socket, POLLOUT, 0};
    poll(&waiting, 1, 1);
}
