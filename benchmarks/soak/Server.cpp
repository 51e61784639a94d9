// A server with the limits for strangers, and a hundred clients at a time that come, send rubbish, and go.

#include "Soak.h"

#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXNetworkServer.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {
constexpr int clients = 100;

std::mt19937 chance(1);

unsigned below(unsigned n) { return static_cast<unsigned>(chance() % n); }

sockaddr_in loopback(std::uint32_t machine, int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + machine);
    return address;
}

/// A stranger, from one of fifty machines, at any of its ports.
class Stranger {
public:
    explicit Stranger(int port) : _socket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        const linger none = {1, 0}; // each breaks off, or the system runs out of ports
        setsockopt(_socket, SOL_SOCKET, SO_LINGER, &none, sizeof none);
        const sockaddr_in own = loopback(below(50), 0), there = loopback(0, port);
        bind(_socket, reinterpret_cast<const sockaddr*>(&own), sizeof own);
        connect(_socket, reinterpret_cast<const sockaddr*>(&there), sizeof there);
    }
    ~Stranger() { close(_socket); }
    Stranger(const Stranger&) = delete;
    Stranger& operator=(const Stranger&) = delete;

    // Messages, whole and unfinished, of a few bytes and of far too many; now and then it reads, or hears no
    // more.
    void act() {
        static const std::string rubbish = randomBytes(200'000);
        const std::size_t longest = below(100) == 0 ? rubbish.size() : 300;
        for (unsigned messages = below(4); messages; --messages) {
            send(_socket, rubbish.data(), below(static_cast<unsigned>(longest)), MSG_NOSIGNAL);
            send(_socket, "_KXEOB", below(8), MSG_NOSIGNAL);
        }
        char read[4096];
        if (below(2))
            recv(_socket, read, sizeof read, 0);
        if (below(50) == 0)
            shutdown(_socket, below(2) ? SHUT_WR : SHUT_RD);
    }

private:
    static std::string randomBytes(std::size_t length) {
        std::string bytes(length, 0);
        for (char& byte : bytes)
            byte = static_cast<char>(chance());
        return bytes;
    }

    int _socket;
};

// What a game does in a step: each message is answered.
void serve(KXNetworkServer& server) {
    while (server.checkForIncomingConnections() != -1) {
    }
    server.poll();
    int from;
    while (const std::unique_ptr<KXNetworkBuffer> message{server.receiveNext(&from)}) {
        KXNetworkBuffer answer(message->readStringTemp(20), 20);
        for (int i = 0; i < 100; ++i)
            answer.appendLong(message->readLong());
        server.sendBufferToClient(from, &answer);
    }
}

int portOf(const KXNetworkServer& server) {
    char* const address = server.IPAddress();
    const int port = std::atoi(std::strrchr(address, ':') + 1);
    std::free(address);
    return port;
}
} // namespace

bool soakServer(Watch& watch) {
    KXNetworkServer server("127.0.0.1", 0, clients, 0, clients);
    server.setLimits(KXNetworkLimitsForStrangers());
    const int port = portOf(server);
    std::vector<std::unique_ptr<Stranger>> strangers(clients);
    for (std::uint64_t step = 0; !watch.isOver(); ++step) {
        for (auto& stranger : strangers) {
            if (stranger && below(100) == 0)
                stranger.reset();
            if (!stranger && below(4) == 0)
                stranger = std::make_unique<Stranger>(port);
            if (stranger && below(4) == 0)
                stranger->act();
        }
        watch.stepBegins();
        serve(server);
        KXLogicUpdate();
        watch.stepEnds();
        if (step % 1000)
            continue;
        for (auto& stranger : strangers)
            stranger.reset();
        for (int turns = 0; turns < 1000 && !server.clientIDList().empty(); ++turns)
            serve(server);
        watch.look();
    }
    return true;
}
