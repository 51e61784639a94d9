#include "platform/Sockets.h"

#include "platform/SystemSockets.h"

#include <algorithm>

#include <mstcpip.h>

// A socket is a handle, of which the system uses the lower half.
static int numberOf(SOCKET socket) { return socket == INVALID_SOCKET ? -1 : static_cast<int>(socket); }

static SOCKET handleOf(int socket) { return static_cast<SOCKET>(socket); }

void _KXStartSockets() {
    static const int started = [] {
        WSADATA about;
        return WSAStartup(MAKEWORD(2, 2), &about); // ends with the process
    }();
    static_cast<void>(started);
}

static void set(int socket, int level, int option, DWORD value) {
    setsockopt(handleOf(socket), level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

static void prepare(int socket) {
    SetHandleInformation(reinterpret_cast<HANDLE>(handleOf(socket)), HANDLE_FLAG_INHERIT, 0);
    // A game's messages are small and each of them is waited for.
    set(socket, IPPROTO_TCP, TCP_NODELAY, 1);
}

int _KXOpenSocket(const _KXSocketAddress& address) {
    _KXStartSockets();
    const int socket = numberOf(::socket(address.isIPv4() ? AF_INET : AF_INET6, SOCK_STREAM, IPPROTO_TCP));
    if (socket != -1)
        prepare(socket);
    return socket;
}

void _KXCloseSocket(int socket) { closesocket(handleOf(socket)); }

void _KXMakeNonBlocking(int socket) {
    u_long on = 1;
    ioctlsocket(handleOf(socket), static_cast<long>(FIONBIO), &on);
}

void _KXKeepAlive(int socket, int seconds) {
    constexpr ULONG millisecondsPerSecond = 1000, questions = 3;
    const ULONG silence = static_cast<ULONG>(std::max(seconds, 1)) * millisecondsPerSecond;
    tcp_keepalive options = {1, silence, std::max(silence / questions, millisecondsPerSecond)};
    DWORD ignored = 0;
    WSAIoctl(handleOf(socket), SIO_KEEPALIVE_VALS, &options, sizeof options, nullptr, 0, &ignored, nullptr,
             nullptr);
}

bool _KXBind(int socket, _KXSocketAddress& address) {
    // What is remembered of old connections is in nobody's way here; reusing would share the port with
    // strangers.
    set(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, 1);
    if (!address.isIPv4())
        set(socket, IPPROTO_IPV6, IPV6_V6ONLY, 0);
    sockaddr_storage bound;
    int length = static_cast<int>(_KXToSystem(address, bound));
    if (bind(handleOf(socket), reinterpret_cast<const sockaddr*>(&bound), length) != 0)
        return false;
    if (getsockname(handleOf(socket), reinterpret_cast<sockaddr*>(&bound), &length) == 0)
        address.port = _KXFromSystem(bound).port;
    return true;
}

bool _KXListen(int socket, int backlog) { return listen(handleOf(socket), backlog) == 0; }

int _KXAccept(int listener, _KXSocketAddress& peer) {
    sockaddr_storage from = {};
    int length = sizeof from;
    const int socket = numberOf(accept(handleOf(listener), reinterpret_cast<sockaddr*>(&from), &length));
    if (socket != -1) {
        peer = _KXFromSystem(from);
        prepare(socket);
        _KXMakeNonBlocking(socket);
    }
    return socket;
}

static bool isConnectedToItself(int socket) {
    sockaddr_storage own = {}, peer = {};
    int ownLength = sizeof own, peerLength = sizeof peer;
    return getsockname(handleOf(socket), reinterpret_cast<sockaddr*>(&own), &ownLength) == 0 &&
           getpeername(handleOf(socket), reinterpret_cast<sockaddr*>(&peer), &peerLength) == 0 &&
           _KXFromSystem(own) == _KXFromSystem(peer);
}

_KXConnecting _KXBeginConnecting(int socket, const _KXSocketAddress& address) {
    _KXMakeNonBlocking(socket);
    sockaddr_storage peer;
    const int length = static_cast<int>(_KXToSystem(address, peer));
    if (connect(handleOf(socket), reinterpret_cast<const sockaddr*>(&peer), length) == 0)
        return isConnectedToItself(socket) ? _KXConnecting::failed : _KXConnecting::done;
    return WSAGetLastError() == WSAEWOULDBLOCK ? _KXConnecting::pending : _KXConnecting::failed;
}

// Waits for room to write, or for the news that there will be none: how many of the two have come.
static int awaitRoom(int socket, timeval* atMost) {
    fd_set room, failure;
    FD_ZERO(&room);
    FD_ZERO(&failure);
    room.fd_array[room.fd_count++] = handleOf(socket);
    failure.fd_array[failure.fd_count++] = handleOf(socket);
    return select(0, nullptr, &room, &failure, atMost);
}

static _KXConnecting outcomeWithin(int socket, timeval* atMost) {
    const int ready = awaitRoom(socket, atMost);
    if (ready == 0)
        return _KXConnecting::pending;
    int error = 0, length = sizeof error;
    const bool connected =
        ready > 0 &&
        getsockopt(handleOf(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &length) == 0 &&
        error == 0;
    return connected && !isConnectedToItself(socket) ? _KXConnecting::done : _KXConnecting::failed;
}

_KXConnecting _KXCheckConnecting(int socket) {
    timeval now = {0, 0};
    return outcomeWithin(socket, &now);
}

bool _KXConnect(int socket, const _KXSocketAddress& address) {
    _KXConnecting outcome = _KXBeginConnecting(socket, address);
    while (outcome == _KXConnecting::pending)
        outcome = outcomeWithin(socket, nullptr);
    return outcome == _KXConnecting::done;
}

_KXSocketFailure _KXSocketFailureOf(int error) {
    if (error == WSAEWOULDBLOCK)
        return _KXSocketWouldBlock;
    return error == WSAEINTR || error == WSAENOBUFS ? _KXSocketInterrupted : _KXSocketBroken;
}

static int bytesOrFailure(int count) { return count < 0 ? _KXSocketFailureOf(WSAGetLastError()) : count; }

int _KXSendBytes(int socket, const void* data, int length) {
    return bytesOrFailure(send(handleOf(socket), static_cast<const char*>(data), length, 0));
}

int _KXReceiveBytes(int socket, void* data, int length) {
    return bytesOrFailure(recv(handleOf(socket), static_cast<char*>(data), length, 0));
}

void _KXAwaitRoom(int socket) {
    timeval moment = {0, 1000};
    awaitRoom(socket, &moment);
}
