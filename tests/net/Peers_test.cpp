// Peers that keep to no rules, met by a server and by a client: both go on, whatever the other end does.

#include "net/NetTest.h"
#include "net/Socket.h"

#include <tuple>

namespace {
struct Peers : testing::TestWithParam<bool> {
    Peers() {
        EXPECT_TRUE(_KXFindAddress("127.0.0.1", 0, address) && _KXBind(listener.get(), address));
        EXPECT_TRUE(_KXListen(listener.get(), 4));
        end.setStoredBufferLimit(1000);
        end.setSendRetryLimit(0);
    }
    std::unique_ptr<RawPeer> connect() {
        if (isServer)
            return std::make_unique<RawPeer>(server);
        EXPECT_TRUE(client.connect("127.0.0.1", address.port));
        int accepted = -1;
        EXPECT_TRUE(eventually([&] { return (accepted = _KXAccept(listener.get(), peerAddress)) != -1; }));
        return std::make_unique<RawPeer>(accepted);
    }
    std::optional<std::string> next() { return isServer ? nextFrom(server, 0) : nextFrom(client); }
    bool connected() const { return isServer ? server.isClientConnected(0) : client.connected(); }
    int send(const char* bytes, int length) {
        return isServer ? server._sendBufferToClient(0, bytes, length) : client._send(bytes, length);
    }
    int send(KXNetworkBuffer* buffer) {
        return isServer ? server.sendBufferToClient(0, buffer) : client.send(buffer);
    }
    void disconnect() { isServer ? server.disconnectClient(0) : client.disconnect(); }

    const bool isServer = GetParam();
    KXNetworkServer server{"127.0.0.1", 0, 1, 0, 4};
    KXNetworkClient client;
    _KXNetworkHandler& end = isServer ? static_cast<_KXNetworkHandler&>(server) : client;
    const _KXSocketOwner listener{_KXOpenSocket()};
    _KXSocketAddress address, peerAddress;
};
INSTANTIATE_TEST_SUITE_P(ServerAndClient, Peers, testing::Bool());

TEST_P(Peers, SendingTellsHowMuchWasTaken) {
    KXNetworkBuffer unsent("12", 2), buffer("12", 2);
    EXPECT_EQ(send("abc", 3) + send(&unsent) + send(nullptr), -6) << "nobody is there";
    EXPECT_EQ(unsent.bufferLength(), 9) << "the marker is appended all the same";
    EXPECT_EQ(next(), std::nullopt);
    const std::unique_ptr<RawPeer> peer = connect();
    EXPECT_EQ(send("abc", 0) + send("abc", -5) + send(nullptr, 3), 0);
    EXPECT_EQ(send(nullptr), -2);
    EXPECT_EQ(send("a\0c", 3), 3);
    EXPECT_EQ(send(&buffer), 9);
    EXPECT_EQ(send(&buffer), 16);
    EXPECT_EQ(peer->receive(28), "a\0c12"s + marker + "12" + marker + marker);
}

TEST_P(Peers, WhatTheySendAndHowTheyLeave) {
    // What they send and do, the message that comes, and whether they stay connected.
    const std::tuple<std::string, void (*)(RawPeer&), std::optional<std::string>, bool> rows[] = {
        {"", [](RawPeer& peer) { peer.close(); }, {}, false},
        {"part", [](RawPeer& peer) { peer.reset(); }, {}, false},
        {"one" + marker + "part", [](RawPeer& peer) { peer.endSending(); }, "one", false},
        {marker + marker, [](RawPeer&) {}, "", true},
        {std::string(2000, 'x'), [](RawPeer&) {}, {}, false}};
    end.setClearsStoredBuffers(true);
    for (const auto& row : rows) {
        const auto& [sends, then, message, stays] = row;
        SCOPED_TRACE(&row - rows);
        const std::unique_ptr<RawPeer> peer = connect();
        peer->send(sends);
        then(*peer);
        EXPECT_EQ(next(), message);
        EXPECT_EQ(next(), stays ? message : std::nullopt);
        EXPECT_EQ(connected(), stays);
        disconnect();
        EXPECT_EQ(end._storedLength(0), 0) << "nothing is left for the next";
    }
}

TEST_P(Peers, WhatALeaverLeavesBehind) {
    for (const bool clears : {false, true})
        for (const bool leavesItself : {true, false}) {
            end.setClearsStoredBuffers(clears);
            const std::unique_ptr<RawPeer> leaver = connect();
            leaver->send("whole" + marker + "part");
            if (leavesItself)
                leaver->close();
            EXPECT_EQ(next(), "whole");
            leavesItself ? static_cast<void>(next()) : disconnect();
            EXPECT_FALSE(connected());
            const std::unique_ptr<RawPeer> heir = connect();
            heir->send("new" + marker);
            EXPECT_EQ(next(), clears ? "new" : "partnew");
            disconnect();
        }
}

TEST_P(Peers, SendingToOneThatIsGoneOrNeverReadsFails) {
    for (const bool resets : {false, true}) {
        const std::unique_ptr<RawPeer> peer = connect();
        resets ? peer->reset() : peer->close();
        EXPECT_TRUE(eventually([&] { return send("x", 1) != 1; }) && !connected());
    }
    const std::unique_ptr<RawPeer> peer = connect();
    const std::string bytes(64 << 20, 'x');
    const int sent = send(bytes.data(), 64 << 20);
    EXPECT_TRUE(sent > 0 && sent < 64 << 20 && !connected()) << sent;
    EXPECT_EQ(send("x", 1), -2);
}
} // namespace
