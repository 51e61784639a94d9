#include <Kobaltrix/KXNetworkClient.h>

#include "net/NetTest.h"

#include <random>

#include <sys/wait.h>

namespace {
struct Client : testing::Test {
    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 16};
    const int port = portOf(server);
    KXNetworkClient client;
};

TEST_F(Client, NotConnected) {
    const int descriptor = nextDescriptor();
    // A port that nobody listens at, as nobody does any more.
    const int closed = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
    const std::pair<const char*, int> rows[] = {
        {"127.0.0.1", closed}, {nullptr, port}, {"..", port}, {"127.0.0.1", 65536}, {"127.0.0.1", -1}};
    for (const auto& [host, to] : rows) {
        SCOPED_TRACE(to);
        EXPECT_FALSE(client.connect(host, to) || client.connected());
        client.disconnect();
        EXPECT_EQ(nextDescriptor(), descriptor);
    }
}

TEST_F(Client, ConnectingAgainClosesTheOldConnection) {
    const int descriptor = nextDescriptor();
    {
        KXNetworkClient other;
        for (const int id : {0, 1}) {
            ASSERT_TRUE(other.connect("127.0.0.1", port));
            ASSERT_EQ(acceptOne(server), id);
        }
        EXPECT_EQ(nextFrom(server, 0), std::nullopt);
        EXPECT_FALSE(other.connect("..", port) || other.connected());
        ASSERT_TRUE(other.connect("127.0.0.1", port));
    }
    server.disconnectAllClients();
    EXPECT_EQ(nextDescriptor(), descriptor);
    // The descriptor 0 is no exception but for being left open, and that a server with it tells no address.
    const auto connects = [this] { return client.connect("127.0.0.1", port) && client.connected(); };
    const auto worksWithoutInput = [&] {
        close(0);
        const bool connected = !KXNetworkServer("127.0.0.1", 0, 1, 0, 1).IPAddress() && connects();
        const int next = nextDescriptor();
        return connected && connects() && nextDescriptor() > next;
    };
    EXPECT_EXIT(_exit(worksWithoutInput() ? 7 : 8), testing::ExitedWithCode(7), "");
}

TEST_F(Client, MessagesOfAllLengthsComeBackFromAnotherProcess) {
    if (fork() == 0) {
        client.connect("localhost", port);
        while (const auto message = nextFrom(client)) {
            KXNetworkBuffer answer(message->data(), static_cast<int>(message->size()));
            client.send(&answer);
        }
        _exit(0);
    }
    ASSERT_EQ(acceptOne(server), 0);
    std::mt19937 random(1);
    for (int i = 0; i < 10'000; ++i) {
        // Mostly small messages, some of many kilobytes, one more than the system buffers.
        std::string message(i == 5000 ? 8 << 20 : random() % (i % 100 ? 100 : 100'000), 0);
        for (char& byte : message)
            byte = static_cast<char>(random() >> 24);
        KXNetworkBuffer buffer(message.data(), static_cast<int>(message.size()));
        ASSERT_EQ(server.sendBufferToClient(0, &buffer), static_cast<int>(message.size()) + 7);
        ASSERT_TRUE(nextFrom(server, 0) == message) << i;
    }
    server.disconnectClient(0); // which ends the other process
    wait(nullptr);
}
} // namespace
