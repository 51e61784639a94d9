// What docs/network.md shows is what happens; its code is compiled into this program.

#include "net/RawPeer.h"

#include <fstream>
#include <sstream>

void serverStep(KXNetworkServer& server);
long clientStep(KXNetworkClient& client, long x);

namespace {
TEST(NetworkPage, TheBytesOfTheExample) {
    std::ifstream page(NETWORK_PAGE);
    std::string line, bytes, last;
    KXNetworkBuffer buffer;
    while (std::getline(page, line)) {
        const std::size_t gap = line.find("  ");
        if (gap == std::string::npos || gap < 2 || line.find_first_not_of("0123456789ABCDEF ") < gap)
            continue;
        std::istringstream digits(line.substr(0, gap));
        for (int byte; digits >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
        last = line.substr(line.find_first_not_of(' ', gap));
        if (last == "appendLong(42)")
            buffer.appendLong(42);
        else if (last == "appendFloat(1.5f)")
            buffer.appendFloat(1.5f);
        else if (last == "appendString(\"hi\", 3)")
            buffer.appendString("hi", 3);
    }
    EXPECT_EQ(last, "the marker, which sending appends");
    KXNetworkServer server("127.0.0.1", 0, 1, 0, 1);
    const RawPeer peer(portOf(server));
    ASSERT_EQ(acceptOne(server), 0);
    EXPECT_EQ(server.sendBufferToClient(0, &buffer), 26);
    EXPECT_EQ(peer.receive(26), bytes);
    peer.send(bytes);
    std::unique_ptr<KXNetworkBuffer> message;
    ASSERT_TRUE(eventually([&] {
        message.reset(server.receiveBufferFromClient(0));
        return message != nullptr;
    }));
    EXPECT_EQ(message->readLong(), 42);
    EXPECT_EQ(message->readFloat(), 1.5f);
    EXPECT_STREQ(message->readStringTemp(3), "hi");
    EXPECT_FALSE(message->hasMoreData());
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
