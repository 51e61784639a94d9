#include "platform/Sockets.h"

#include "platform/SocketSignals.h"

#include <cerrno>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

static sockaddr_in systemAddress(_KXSocketAddress address) {
    sockaddr_in result = {};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = address.host;
    result.sin_port = htons(address.port);
    return result;
}

bool _KXFindAddress(const char* host, int port, _KXSocketAddress& address) {
    if (port < 0 || port > 65535)
        return false;
    address = {htonl(INADDR_ANY), static_cast<std::uint16_t>(port)};
    if (!host)
        return true;
    addrinfo hints = {}, *list = nullptr;
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    if (getaddrinfo(host, nullptr, &hints, &list) != 0)
        return false;
    address.host = reinterpret_cast<const sockaddr_in*>(list->ai_addr)->sin_addr.s_addr;
    freeaddrinfo(list);
    return true;
}

std::string _KXAddressText(_KXSocketAddress address) {
    char host[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &address.host, host, sizeof host);
    return std::string(host) + ":" + std::to_string(address.port);
}

static void prepare(int socket) {
    fcntl(socket, F_SETFD, FD_CLOEXEC);
    _KXSilenceSocket(socket);
    // A game's messages are small and each of them is waited for.
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

int _KXOpenSocket() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (socket != -1)
        prepare(socket);
    return socket;
}

void _KXCloseSocket(int socket) { close(socket); }

void _KXMakeNonBlocking(int socket) { fcntl(socket, F_SETFL, O_NONBLOCK); }

bool _KXBind(int socket, _KXSocketAddress& address) {
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in bound = systemAddress(address);
    socklen_t length = sizeof bound;
    if (bind(socket, reinterpret_cast<const sockaddr*>(&bound), length) != 0)
        return false;
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &length) == 0)
        address.port = ntohs(bound.sin_port);
    return true;
}

bool _KXListen(int socket, int backlog) { return listen(socket, backlog) == 0; }

int _KXAccept(int listener) {
    const int socket = accept(listener, nullptr, nullptr);
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

static bool isConnectedToItself(int socket) {
    sockaddr_in own = {}, peer = {};
    socklen_t ownLength = sizeof own, peerLength = sizeof peer;
    return getsockname(socket, reinterpret_cast<sockaddr*>(&own), &ownLength) == 0 &&
           getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &peerLength) == 0 &&
           own.sin_port == peer.sin_port && own.sin_addr.s_addr == peer.sin_addr.s_addr;
}

bool _KXConnect(int socket, _KXSocketAddress address) {
    _KXMakeNonBlocking(socket);
    const sockaddr_in peer = systemAddress(address);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) != 0 &&
        !((errno == EINPROGRESS || errno == EINTR) && finishConnecting(socket)))
        return false;
    return !isConnectedToItself(socket);
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
