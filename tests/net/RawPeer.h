#pragma once

#include "net/Messages.h"
#include "net/Socket.h"

#include <Kobaltrix/KXNetworkClient.h>
#include <Kobaltrix/KXNetworkServer.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

#ifndef POLLRDHUP
#define POLLRDHUP POLLHUP
#endif

/// Whether something comes true that the system brings about, such as the arrival of bytes.
template<typename Condition>
bool eventually(Condition&& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        sched_yield();
    }
    return true;
}

/// The next message of a client, waited for; nothing if it leaves.
inline std::optional<std::string> nextFrom(KXNetworkServer& server, int id) {
    std::optional<std::string> message;
    eventually([&] {
        message = take(server.receiveBufferFromClient(id));
        return message || !server.isClientConnected(id);
    });
    return message;
}

/// The next message of the server, waited for; nothing if it leaves.
inline std::optional<std::string> nextFrom(KXNetworkClient& client) {
    std::optional<std::string> message;
    eventually([&] {
        message = take(client.receive());
        return message || !client.connected();
    });
    return message;
}

/// Waits until the end of what a peer has sent has arrived at a socket of this process.
inline bool endHasArrived(int socket) {
    pollfd waiting = {socket, POLLRDHUP, 0};
    return poll(&waiting, 1, 60'000) == 1;
}

/// The port in the text that KXNetworkServer::IPAddress() gives.
inline int portOf(const KXNetworkServer& server) {
    char* text = server.IPAddress();
    const int port = std::atoi(std::string_view(text).substr(std::string_view(text).find(':') + 1).data());
    std::free(text);
    return port;
}

/// The descriptor that will be given next.
inline int nextDescriptor() {
    const int descriptor = open("/dev/null", O_RDONLY);
    close(descriptor);
    return descriptor;
}

/// A peer that keeps to no rules: a plain socket, connected to a port of this machine.
class RawPeer {
public:
    explicit RawPeer(int port) : _socket(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    /// Of a connection that was accepted.
    static RawPeer accepted(int listener) { return RawPeer(accept(listener, nullptr, nullptr), true); }
    ~RawPeer() { close(); }
    RawPeer(const RawPeer&) = delete;
    RawPeer& operator=(const RawPeer&) = delete;

    int socketNumber() const { return _socket; }

    /// Sends bytes; false when the connection is broken.
    bool send(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = ::send(_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count < 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }
    /// Sends as much as the system takes at once, possibly nothing.
    void sendWithoutWaiting(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = ::send(_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (count <= 0)
                return;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }
    /// The next bytes, waited for; fewer when the connection ends.
    std::string receive(std::size_t length) const {
        std::string bytes(length, 0);
        const ssize_t count = recv(_socket, bytes.data(), length, MSG_WAITALL);
        bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return bytes;
    }
    /// Whether the other end has closed the connection, which is waited for.
    bool isClosed() const {
        pollfd waiting = {_socket, POLLIN, 0};
        poll(&waiting, 1, 60'000);
        char byte;
        return recv(_socket, &byte, 1, MSG_DONTWAIT) == 0 || errno == ECONNRESET;
    }
    void endSending() const { shutdown(_socket, SHUT_WR); }
    /// Breaks the connection instead of closing it.
    void reset() {
        const linger none = {1, 0};
        setsockopt(_socket, SOL_SOCKET, SO_LINGER, &none, sizeof none);
        close();
    }
    void close() {
        if (_socket != -1)
            ::close(_socket);
        _socket = -1;
    }

private:
    RawPeer(int socket, bool) : _socket(socket) {}
    int _socket;
};

/// Accepts a connection, waited for.
inline int acceptOne(KXNetworkServer& server) {
    int id = -1;
    eventually([&] { return (id = server.checkForIncomingConnections()) != -1; });
    return id;
}
