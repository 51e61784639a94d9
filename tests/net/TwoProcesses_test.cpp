// A server and a client in two processes, as in a game, with more messages than any game sends.

#include "net/RawPeer.h"

#include <cstdint>
#include <random>
#include <sys/wait.h>

namespace {
constexpr int messagesEachWay = 100'000;
constexpr int batch = 100; // sent before the other end has its turn

// Over lengths and bytes, in order.
class Checksum {
public:
    void add(std::string_view message) {
        mix(message.size());
        for (unsigned char byte : message)
            mix(byte);
    }
    std::string text() const { return std::to_string(_value); }

private:
    void mix(std::uint64_t value) { _value = (_value ^ value) * 1099511628211u; }
    std::uint64_t _value = 14695981039346656037u;
};

// Mostly small messages, some empty, a few of many kilobytes.
class Composer {
public:
    explicit Composer(unsigned seed) : _random(seed) {}
    std::string next() {
        const auto kind = _random() % 1000;
        const auto length = kind == 0 ? _random() % 200'000 : kind < 50 ? _random() % 5000 : _random() % 100;
        std::string message(length, 0);
        for (char& byte : message)
            byte = static_cast<char>(_random() >> 24);
        return message;
    }

private:
    std::mt19937 _random;
};

// One end of the exchange, on whatever sends and receives.
template<typename Send, typename Receive>
struct End {
    Send send;
    Receive receive;
    Checksum sent, received;
    Composer composer;

    bool sendBatch() {
        for (int i = 0; i < batch; ++i) {
            const std::string message = composer.next();
            sent.add(message);
            if (!sendOne(message))
                return false;
        }
        return true;
    }
    bool sendOne(const std::string& message) {
        KXNetworkBuffer buffer(message.data(), static_cast<int>(message.size()));
        const int length = static_cast<int>(message.size() + marker.size());
        return send(&buffer) == length;
    }
    bool receiveBatch() {
        for (int i = 0; i < batch; ++i) {
            const auto message = receive();
            if (!message)
                return false;
            received.add(*message);
        }
        return true;
    }
};

template<typename Send, typename Receive>
End<Send, Receive> makeEnd(Send send, Receive receive, unsigned seed) {
    return {send, receive, {}, {}, Composer(seed)};
}

bool playClient(int port) {
    KXNetworkClient client;
    if (!client.connect("localhost", port))
        return false;
    auto end = makeEnd([&](KXNetworkBuffer* buffer) { return client.send(buffer); },
                       [&] { return nextFrom(client); }, 1);
    for (int i = 0; i < messagesEachWay; i += batch)
        if (!end.sendBatch() || !end.receiveBatch())
            return false;
    return end.sendOne(end.sent.text()) && nextFrom(client) == end.received.text();
}

TEST(TwoProcesses, ExchangeMessagesAndAgreeOnThem) {
    KXNetworkServer server("127.0.0.1", 0, 2, 0, 4);
    const int port = portOf(server);
    const pid_t process = fork();
    if (process == 0) {
        alarm(250);
        _exit(playClient(port) ? 7 : 8);
    }
    ASSERT_EQ(acceptOne(server), 0);
    auto end = makeEnd([&](KXNetworkBuffer* buffer) { return server.sendBufferToClient(0, buffer); },
                       [&] { return nextFrom(server, 0); }, 2);
    for (int i = 0; i < messagesEachWay; i += batch) {
        ASSERT_TRUE(end.receiveBatch()) << i;
        ASSERT_TRUE(end.sendBatch()) << i;
    }
    EXPECT_EQ(nextFrom(server, 0), end.received.text());
    EXPECT_TRUE(end.sendOne(end.sent.text()));
    EXPECT_EQ(nextFrom(server, 0), std::nullopt);
    EXPECT_FALSE(server.isClientConnected(0));
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
}
} // namespace
