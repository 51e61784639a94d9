#include <Kobaltrix/KXNetworkServer.h>

#include "core/ground/ErrorSlot.h"
#include "net/NetTest.h"
#include "support/System.h"

#include <Kobaltrix/KXError.h>

#include <climits>
#include <new>
#include <vector>

namespace {
using Ids = std::vector<int>;

struct Server : testing::Test {
    static bool refuses(KXNetworkServer& server, const RawPeer& peer) {
        return eventually([&] { return server.checkForIncomingConnections() == -1 && peer.isClosed(); });
    }
    KXNetworkServer server{"127.0.0.1", 0, 3, 42, 16};
};

// The error after a server could not be made.
std::string failure(const char* address, int port, int maxClients) {
    _KXClearError();
    EXPECT_THROW(KXNetworkServer(address, port, maxClients, 0, 1), std::bad_alloc);
    return KXError();
}

TEST_F(Server, CannotBeMade) {
    const int used = portOf(server);
    const long open = openFiles();
    const std::pair<const char*, int> unusable[] = {
        {"127.0.0.1", used}, {nullptr, used}, {"192.0.2.1", 0}, {"..", 0}, {nullptr, 65536}};
    for (const auto& [address, port] : unusable) // one of them another machine's
        EXPECT_EQ(failure(address, port, 1), "Couldn't bind the socket.") << port;
    EXPECT_EQ(failure(nullptr, 0, -1) + failure(nullptr, 0, INT_MAX), "");
    EXPECT_EQ(openFiles(), open) << "what was opened is closed";
    EXPECT_THROW(KXNetworkServer(), std::bad_alloc);
}

TEST_F(Server, StartsAgainAtOnceWhereOneWasAndTellsTheAddress) {
    auto any = std::make_unique<KXNetworkServer>(nullptr, 0, 1, 0, 1);
    const RawPeer peer(*any);
    const int port = portOf(*any);
    any.reset(); // and its end of the connection stays with the system for a while
    EXPECT_EQ(peer.receive(1), "");
    any = std::make_unique<KXNetworkServer>(nullptr, port, 1, 0, 1);
    EXPECT_EQ(addressOf(*any), "0.0.0.0:" + std::to_string(port));
}

TEST_F(Server, GivesTheLowestFreeSlot) {
    EXPECT_EQ(server.checkForIncomingConnections(), -1);
    const RawPeer first(server), second(server);
    server.disconnectClient(0);
    EXPECT_EQ(first.receive(1), "");
    EXPECT_EQ(server.clientIDList(), Ids({1}));
    const RawPeer third(server), fourth(server), tooMany(server, false);
    EXPECT_EQ(Ids({third.id, fourth.id}), Ids({0, 2}));
    EXPECT_TRUE(refuses(server, tooMany));
    EXPECT_EQ(server.clientIDList(), Ids({0, 1, 2}));
    server.disconnectAllClients();
    EXPECT_TRUE(server.clientIDList().empty());
    EXPECT_EQ(second.receive(1) + third.receive(1) + fourth.receive(1), "");
}

TEST_F(Server, IdsOfNoClient) {
    const RawPeer peer(server);
    for (int id : {-1, 1, 3, 4, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(id);
        server.disconnectClient(id);
        EXPECT_FALSE(server.isClientConnected(id) || server._validClient(id));
        EXPECT_EQ(server._sendBufferToClient(id, "abc", 3), -2);
        EXPECT_TRUE(!server.receiveBufferFromClient(id) && !server.clientAddress(id));
    }
    EXPECT_TRUE(server.isClientConnected(0) && server._validClient(0));
    EXPECT_EQ(server.clientAddress(0), addressOf(server));
}

TEST_F(Server, SendsToAllAMarkerMoreForEachSlotAlsoAFreeOne) {
    const RawPeer first(server), second(server);
    KXNetworkBuffer all("all", 3);
    server._sendBufferToAllClients("-", 1);
    server.disconnectClient(0);
    server.sendBufferToAllClients(&all);
    server.sendBufferToAllClients(nullptr);
    EXPECT_EQ(all.bufferLength(), 3 + 3 * 7);
    EXPECT_EQ(first.receive(100), "-");
    EXPECT_EQ(second.receive(1 + 3 + 14), "-all" + marker + marker);
}
} // namespace
