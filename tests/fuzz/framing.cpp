// Bytes of strangers, cut as they like, between real sockets and a server and a client with limits: each
// whole message comes out once and in order, nothing is made up, and nobody gets another one's bytes.

#include "Fuzz.h"

#include <Kobaltrix/KXNetworkClient.h>
#include <Kobaltrix/KXNetworkServer.h>

#include <cstdlib>
#include <memory>
#include <optional>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

static const std::string marker("_KXEOB", 7);

static sockaddr_in loopback(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}
template<class Call> // bind and connect
static void with(Call call, int socket, sockaddr_in address) {
    require(call(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "loopback");
}
static int portOf(int socket) {
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

namespace {
/// The other end of a connection, with what should come of all it has sent.
class Peer {
public:
    explicit Peer(int socket) : _socket(socket) {
        const linger none = {1, 0}; // or the system runs out of ports
        setsockopt(_socket, SOL_SOCKET, SO_LINGER, &none, sizeof none);
    }
    ~Peer() { close(_socket); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    void send(const std::string& bytes) {
        if (const ssize_t count = ::send(_socket, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
            count > 0)
            _sent.append(bytes, 0, static_cast<std::size_t>(count));
    }
    void endSending() { shutdown(_socket, SHUT_WR); }
    void read() {
        char bytes[512];
        const ssize_t count = recv(_socket, bytes, sizeof bytes, MSG_DONTWAIT);
        if (count <= 0)
            return;
        const auto length = static_cast<std::size_t>(count);
        require(_told.compare(0, length, bytes, length) == 0, "what was sent arrives, in order");
        _told.erase(0, length);
    }
    /// What the library was asked to send here.
    void isTold(const std::string& message) { _told += message + marker; }
    /// The library has handed out a message.
    void check(const KXNetworkBuffer& message, int longest) {
        const std::optional<std::string> expected = next(longest);
        char* const bytes = message.buffer();
        const std::string got(bytes, static_cast<std::size_t>(message.bufferLength()));
        std::free(bytes);
        require(expected && got == *expected, "a message is as it was sent");
        _passed += got.size() + marker.size();
    }
    /// The next message that has to come, if one does.
    std::optional<std::string> next(int longest) const {
        const std::size_t end = _sent.find(marker, _passed);
        if (end == _sent.npos || end - _passed > static_cast<std::size_t>(longest))
            return std::nullopt;
        return _sent.substr(_passed, end - _passed);
    }

private:
    int _socket;
    std::string _sent, _told;
    std::size_t _passed = 0; ///< Of what was sent.
};

using Message = std::unique_ptr<KXNetworkBuffer>;

/// A server and a client behave alike towards each of their peers.
struct Server {
    KXNetworkServer end{"127.0.0.1", 0, 2, 0, 2};
    std::unique_ptr<Peer> connect() {
        const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
        char* const address = end.IPAddress();
        with(::connect, socket, loopback(std::atoi(std::strrchr(address, ':') + 1)));
        std::free(address);
        require(end.checkForIncomingConnections() != -1, "a peer is accepted");
        return std::make_unique<Peer>(socket);
    }
    Message older(int id) { return Message(end.receiveBufferFromClient(id)); }
    Message next(int& id) { return Message(end.receiveNext(&id)); }
    void send(int id, KXNetworkBuffer& message) { end.sendBufferToClient(id, &message); }
    bool connected(int id) { return end.isClientConnected(id); }
};
struct Client {
    KXNetworkClient end;
    std::unique_ptr<Peer> connect() {
        // One host for all runs: the system keeps the port of each for a while, and has not so many.
        static const int listener = [] {
            const int made = ::socket(AF_INET, SOCK_STREAM, 0);
            with(::bind, made, loopback(0));
            listen(made, 1);
            return made;
        }();
        require(end.connect("127.0.0.1", portOf(listener)), "a host is found");
        return std::make_unique<Peer>(accept(listener, nullptr, nullptr));
    }
    Message older(int) { return Message(end.receive()); }
    Message next(int& id) {
        id = 0;
        return Message(end.receiveNext());
    }
    void send(int, KXNetworkBuffer& message) { end.send(&message); }
    bool connected(int) { return end.connected(); }
};

template<class End>
void converse(End end, FuzzBytes& bytes, std::size_t count) {
    KXNetworkLimits limits = KXNetworkLimitsForStrangers();
    const int longest = limits.longestMessage = bytes.byte() * 4;
    limits.outgoingBytes = bytes.byte() * 16;
    limits.turnMessages = bytes.byte() % 8 + 1;
    limits.turnMilliseconds = -1; // the machine may be busy
    end.end.setLimits(limits);
    std::unique_ptr<Peer> peers[2];
    for (std::size_t i = 0; i < count; ++i)
        peers[i] = end.connect();
    const auto turn = [&] {
        int from = -1;
        bool any = false;
        end.end.poll();
        for (Message message; (message = end.next(from)); any = true)
            peers[from]->check(*message, longest);
        return any;
    };
    bool lost[2] = {}; // what came behind may be, too
    for (int acts = 0; acts < 200 && !bytes.atEnd(); ++acts) {
        const std::uint8_t act = bytes.byte();
        const int id = count > 1 ? act >> 7 : 0;
        Peer& peer = *peers[id];
        switch (act & 7) {
        case 0:
        case 1:
            peer.send(bytes.text());
            break;
        case 2:
            peer.send(bytes.text() + marker);
            break;
        case 3: // the marker comes in two pieces
            peer.send(bytes.text() + marker.substr(0, act >> 4 & 7));
            turn();
            peer.send(marker.substr(act >> 4 & 7));
            break;
        case 4:
            turn();
            break;
        case 5:
            lost[id] = true;
            if (const Message message = end.older(id))
                peer.check(*message, longest);
            break;
        case 6: {
            const std::string text = bytes.text();
            KXNetworkBuffer message(text.data(), static_cast<int>(text.size()));
            if (end.connected(id))
                peer.isTold(text);
            end.send(id, message);
            lost[id] |= !end.connected(id); // it does not read
            break;
        }
        default:
            act & 8 ? peer.endSending() : peer.read();
        }
    }
    for (std::size_t i = 0; i < count; ++i)
        peers[i]->endSending();
    while (turn()) {
    }
    for (std::size_t i = 0; i < count; ++i) {
        require(lost[i] || !peers[i]->next(longest), "each message has come");
        peers[i]->read();
    }
}
} // namespace

void fuzz(FuzzBytes bytes) {
    const std::uint8_t kind = bytes.byte();
    if (kind & 1)
        converse(Server(), bytes, 2);
    else
        converse(Client(), bytes, 1);
}
