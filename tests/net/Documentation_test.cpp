// What docs/network.md shows is what happens; its code is compiled into this program.

#include "net/NetTest.h"
#include "support/TemporaryFolder.h"

void serverStep(KXNetworkServer& server);
long clientStep(KXNetworkClient& client, long x);

namespace {
TEST(NetworkPage, TheBytesOfTheExample) {
    KXNetworkBuffer buffer;
    buffer.appendLong(42);
    buffer.appendFloat(1.5f);
    buffer.appendString("hi", 3);
    KXNetworkServer server("127.0.0.1", 0, 1, 0, 1);
    const RawPeer peer(server);
    EXPECT_EQ(server.sendBufferToClient(0, &buffer), 26);
    const std::string page = contentOf(NETWORK_PAGE);
    const std::pair<std::size_t, std::string> parts[] = {
        {8, "appendLong(42)"}, {8, "appendFloat(1.5f)"}, {3, "appendString(\"hi\", 3)"}, {7, "the marker, "}};
    for (const auto& [length, part] : parts) {
        std::string line;
        for (const char byte : peer.receive(length))
            line += "0123456789ABCDEF"[byte >> 4 & 15] + ("0123456789ABCDEF"[byte & 15] + " "s);
        line.resize(25, ' ');
        EXPECT_NE(page.find(line + part), std::string::npos) << line + part;
    }
}

TEST(NetworkPage, TheStepsOfTheExample) {
    KXNetworkServer server("127.0.0.1", 0, 2, 0, 4);
    KXNetworkClient clients[2];
    for (KXNetworkClient& client : clients)
        ASSERT_TRUE(client.connect("127.0.0.1", portOf(server)));
    for (long x = 0; x < 2; ++x)
        EXPECT_TRUE(eventually([&] {
            serverStep(server);
            return clientStep(clients[x], 10 + x) == 20 + 2 * x;
        }));
}
} // namespace
