#include <Kobaltrix/KXNetworkClient.h>

#include "net/Messages.h"
#include "net/RawPeer.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

namespace {
struct Client : testing::Test {
    void send(int id, const std::string& bytes) {
        server._sendBufferToClient(id, bytes.data(), static_cast<int>(bytes.size()));
    }

    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 16};
    int port = portOf(server);
    KXNetworkClient client;
};

TEST_F(Client, NotConnected) {
    const int descriptor = nextDescriptor();
    const auto check = [&] {
        KXNetworkBuffer buffer("abc", 3);
        EXPECT_FALSE(client.connected());
        EXPECT_EQ(client.send(&buffer), -2);
        EXPECT_EQ(buffer.bufferLength(), 10) << "the marker is appended all the same";
        EXPECT_EQ(client.send(nullptr), -2);
        EXPECT_EQ(client._send("abc", 3), -2);
        EXPECT_EQ(client.receive(), nullptr);
        client.disconnect();
        client.disconnect();
        EXPECT_EQ(nextDescriptor(), descriptor);
    };
    check();
    // A port that nobody listens at, as nobody does any more.
    const int closed = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
    const struct {
        const char* host;
        int port;
    } rows[] = {{"127.0.0.1", closed}, {nullptr, port},      {"", port},    {"..", port},
                {"127.0.0.1", -1},     {"127.0.0.1", 65536}, {"::1", port}, {"127.0.0.1", INT_MAX}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.host ? row.host : "null");
        EXPECT_FALSE(client.connect(row.host, row.port));
        check();
    }
}

TEST_F(Client, ExchangesMessages) {
    ASSERT_TRUE(client.connect("localhost", port));
    EXPECT_TRUE(client.connected());
    ASSERT_EQ(acceptOne(server), 0);
    EXPECT_EQ(client.receive(), nullptr);
    KXNetworkBuffer buffer;
    buffer.appendLong(-3);
    EXPECT_EQ(client.send(&buffer), 15);
    EXPECT_EQ(client.send(&buffer), 22);
    EXPECT_EQ(client.send(nullptr), -2);
    EXPECT_EQ(client._send("x", 0), 0);
    EXPECT_EQ(client._send(nullptr, 5), 0);
    const std::string minusThree = "\x0d\x0f\x0f\x0f\x0f\x0f\x0f\x0f";
    EXPECT_EQ(nextFrom(server, 0), minusThree);
    EXPECT_EQ(nextFrom(server, 0), minusThree);
    EXPECT_EQ(nextFrom(server, 0), "") << "the second time with a marker more";
    send(0, "a" + marker + marker + "b" + marker);
    EXPECT_EQ(nextFrom(client), "a");
    EXPECT_EQ(nextFrom(client), "");
    EXPECT_EQ(nextFrom(client), "b");
    client.disconnect();
    EXPECT_FALSE(client.connected());
    EXPECT_EQ(nextFrom(server, 0), std::nullopt);
    EXPECT_FALSE(server.isClientConnected(0));
}

TEST_F(Client, AServerThatLeaves) {
    for (const bool clears : {false, true}) {
        client.setClearsStoredBuffers(clears);
        ASSERT_TRUE(client.connect("127.0.0.1", port));
        ASSERT_EQ(acceptOne(server), 0);
        send(0, "last" + marker + "part");
        server.disconnectClient(0);
        EXPECT_EQ(nextFrom(client), "last");
        EXPECT_EQ(nextFrom(client), std::nullopt);
        EXPECT_FALSE(client.connected());
        ASSERT_TRUE(client.connect("127.0.0.1", port));
        ASSERT_EQ(acceptOne(server), 0);
        send(0, "new" + marker);
        EXPECT_EQ(nextFrom(client), clears ? "new" : "partnew");
        client.disconnect();
        server.disconnectAllClients();
    }
}

TEST_F(Client, ConnectingAgainClosesTheOldConnection) {
    ASSERT_TRUE(client.connect("127.0.0.1", port));
    ASSERT_EQ(acceptOne(server), 0);
    const int descriptor = nextDescriptor();
    ASSERT_TRUE(client.connect("127.0.0.1", port));
    ASSERT_EQ(acceptOne(server), 1);
    EXPECT_EQ(nextFrom(server, 0), std::nullopt);
    EXPECT_FALSE(server.isClientConnected(0));
    EXPECT_LE(nextDescriptor(), descriptor);
    EXPECT_FALSE(client.connect("..", port));
    EXPECT_FALSE(client.connected()) << "nor is the old one kept when there is no new one";
    // The descriptor 0 is no exception but for being left open.
    EXPECT_EXIT(
        {
            close(0);
            KXNetworkClient zero;
            const bool connected =
                zero.connect("127.0.0.1", port) && zero.connected() && fcntl(0, F_GETFD) != -1;
            const bool again = zero.connect("127.0.0.1", port) && fcntl(0, F_GETFD) != -1;
            _exit(connected && again ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(Client, HostileServers) {
    const _KXSocketOwner listener(_KXOpenSocket());
    _KXSocketAddress address;
    _KXFindAddress("127.0.0.1", 0, address);
    ASSERT_TRUE(_KXBind(listener.get(), address) && _KXListen(listener.get(), 4));
    client.setStoredBufferLimit(1000);
    client.setSendRetryLimit(0);
    const struct {
        const char* name;
        void (*act)(RawPeer& peer);
        std::optional<std::string> message;
        bool connected;
    } rows[] = {{"closes", [](RawPeer& peer) { peer.close(); }, std::nullopt, false},
                {"resets", [](RawPeer& peer) { peer.reset(); }, std::nullopt, false},
                {"says no more", [](RawPeer& peer) { peer.endSending(); }, std::nullopt, false},
                {"never ends", [](RawPeer& peer) { peer.send(std::string(2000, 'x')); }, std::nullopt, false},
                {"marker only", [](RawPeer& peer) { peer.send(marker); }, "", true},
                {"well-behaved", [](RawPeer& peer) { peer.send("good" + marker); }, "good", true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(client.connect("127.0.0.1", address.port));
        RawPeer peer = RawPeer::accepted(listener.get());
        row.act(peer);
        EXPECT_EQ(nextFrom(client), row.message);
        EXPECT_EQ(client.connected(), row.connected);
        EXPECT_EQ(client._storedLength(0), 0);
    }
    // Never reads: the send gives up when the system takes no more. Then it is as if it had closed.
    ASSERT_TRUE(client.connect("127.0.0.1", address.port));
    RawPeer peer = RawPeer::accepted(listener.get());
    const std::string bytes(64 << 20, 'x');
    const int sent = client._send(bytes.data(), 64 << 20);
    EXPECT_TRUE(sent > 0 && sent < 64 << 20) << sent;
    EXPECT_FALSE(client.connected());
    // And one that is gone when something is sent to it: no signal, a failure in the end.
    ASSERT_TRUE(client.connect("127.0.0.1", address.port));
    RawPeer::accepted(listener.get()).close();
    EXPECT_TRUE(eventually([&] { return client._send("x", 1) != 1; }));
    EXPECT_FALSE(client.connected());
}
} // namespace
