#pragma once

#include "net/Socket.h"
#include "platform/SystemSockets.h"

#include <Kobaltrix/KXNetworkClient.h>
#include <Kobaltrix/KXNetworkServer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

using namespace std::string_literals;

inline const std::string marker = "_KXEOB\0"s;

/// A block that was handed out, which is freed; nothing for null.
inline std::string take(char* block, std::size_t length) {
    const std::string bytes(block ? block : "", block ? length : 0);
    std::free(block);
    return bytes;
}

/// The bytes of a message that was handed out, nothing for null. Deletes it.
inline std::optional<std::string> take(KXNetworkBuffer* message) {
    const std::unique_ptr<KXNetworkBuffer> owned(message);
    return message ? std::optional(take(message->buffer(), static_cast<std::size_t>(message->bufferLength())))
                   : std::nullopt;
}

/// Whether something comes true that the system brings about, such as the arrival of bytes.
template<typename Condition>
bool eventually(Condition&& condition) {
    for (const std::time_t end = std::time(nullptr) + 60; !condition(); std::this_thread::yield())
        if (std::time(nullptr) > end)
            return false;
    return true;
}

/// The next message of a client, waited for; nothing if it leaves.
inline std::optional<std::string> nextFrom(KXNetworkServer& server, int id) {
    std::optional<std::string> next;
    eventually([&] { return (next = take(server.receiveBufferFromClient(id))) || !server._validClient(id); });
    return next;
}

/// The next message of the server, waited for; nothing if it leaves.
inline std::optional<std::string> nextFrom(KXNetworkClient& client) {
    std::optional<std::string> message;
    eventually([&] { return (message = take(client.receive())) || !client.connected(); });
    return message;
}

/// Accepts a connection, waited for.
inline int acceptOne(KXNetworkServer& server) {
    int id = -1;
    eventually([&] { return (id = server.checkForIncomingConnections()) != -1; });
    return id;
}

inline std::string addressOf(const KXNetworkServer& server) {
    char* text = server.IPAddress();
    return take(text, std::string_view(text).size());
}
inline int portOf(const KXNetworkServer& server) {
    const std::string address = addressOf(server);
    return std::stoi(address.substr(address.rfind(':') + 1));
}

/// A peer that keeps to no rules: a plain socket.
class RawPeer {
public:
    explicit RawPeer(int socket) : _socket(socket) {}
    /// Connected to a server that has accepted it, or not yet.
    explicit RawPeer(KXNetworkServer& server, bool waits = true) : RawPeer("127.0.0.1", portOf(server)) {
        id = waits ? acceptOne(server) : -1;
    }
    /// Connected to whoever listens at a port of this machine, from one of its addresses.
    RawPeer(const std::string& from, int port) : RawPeer(_KXOpenSocket()) {
        _KXSocketAddress own, address;
        EXPECT_TRUE(_KXFindAddress(from.c_str(), 0, own) && _KXBind(_socket->get(), own) &&
                    _KXFindAddress("127.0.0.1", port, address) && _KXConnect(_socket->get(), address));
    }

    int id = -1; ///< What the server calls it.

    /// Sends everything, unless the connection ends.
    void send(std::string_view bytes) const {
        EXPECT_TRUE(eventually([&] {
            const int count = _KXSendBytes(_socket->get(), bytes.data(), static_cast<int>(bytes.size()));
            bytes.remove_prefix(static_cast<std::size_t>(std::max(count, 0)));
            return bytes.empty() || count == _KXSocketBroken;
        }));
    }
    /// The next bytes, waited for; fewer when the connection ends.
    std::string receive(std::size_t length) const {
        std::string bytes;
        EXPECT_TRUE(eventually([&] {
            std::string more(length - bytes.size(), 0);
            const int count = _KXReceiveBytes(_socket->get(), more.data(), static_cast<int>(more.size()));
            bytes.append(more, 0, static_cast<std::size_t>(std::max(count, 0)));
            return bytes.size() == length || count == 0 || count == _KXSocketBroken;
        }));
        return bytes;
    }
    /// Whether the other end has closed the connection.
    bool isClosed() const {
        char next;
        return _KXReceiveBytes(_socket->get(), &next, 1) == 0;
    }
    void endSending() const {
        constexpr int sending = 1; // SHUT_WR, or SD_SEND
        shutdown(static_cast<SystemSocket>(_socket->get()), sending);
    }
    void close() { _socket.reset(); }
    /// Breaks the connection instead of closing it.
    void reset() {
        const linger none = {1, 0};
        setsockopt(static_cast<SystemSocket>(_socket->get()), SOL_SOCKET, SO_LINGER,
                   reinterpret_cast<const char*>(&none), sizeof none);
        close();
    }

private:
    using SystemSocket = decltype(::socket(0, 0, 0));

    std::optional<_KXSocketOwner> _socket;
};
