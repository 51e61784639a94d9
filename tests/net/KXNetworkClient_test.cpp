#include <Kobaltrix/KXNetworkClient.h>

#include "net/NetTest.h"
#include "support/System.h"

namespace {
struct Client : testing::Test {
    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 16};
    const int port = portOf(server);
    KXNetworkClient client;
};

TEST_F(Client, NotConnected) {
    const long open = openFiles();
    // A port that nobody listens at, as nobody does any more.
    const int closed = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
    const std::pair<const char*, int> rows[] = {
        {"127.0.0.1", closed}, {nullptr, port}, {"..", port}, {"127.0.0.1", 65536}, {"127.0.0.1", -1}};
    for (const auto& [host, to] : rows) {
        SCOPED_TRACE(to);
        EXPECT_FALSE(client.connect(host, to) || client.connected());
        client.disconnect();
        EXPECT_EQ(openFiles(), open);
    }
}

TEST_F(Client, ConnectingAgainClosesTheOldConnection) {
    const long open = openFiles();
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
    EXPECT_EQ(openFiles(), open);
}

} // namespace
