// What the limits are for: whoever comes, a step of the game stays short and its memory small.

#include "core/ground/Tape.h"
#include "net/Connection.h"
#include "net/NetTest.h"
#include "net/ScriptedSocket.h"
#include "net/StoredBuffers.h"

#include <KobaltrixTest/KXTestClock.h>

#include <tuple>
#include <vector>

namespace {
using Ids = std::vector<int>;

struct Strangers : testing::Test {
    Strangers() { server.setLimits(limits); }
    void set(int KXNetworkLimits::*limit, int value) {
        limits.*limit = value;
        server.setLimits(limits);
    }
    // The clients whose messages a turn hands out, while the game takes that long for each of them.
    Ids turn(std::uint64_t milliseconds = 0) {
        Ids ids;
        server.poll();
        for (int id; take(server.receiveNext(&id)); ids.push_back(id))
            clock.advance(milliseconds);
        return ids;
    }
    // Turns until the system has brought so many messages.
    Ids turns(std::size_t count) {
        Ids ids;
        EXPECT_TRUE(eventually([&] {
            const Ids more = turn();
            ids.insert(ids.end(), more.begin(), more.end());
            return ids.size() >= count;
        }));
        return ids;
    }
    void pass(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            clock.advance(1000);
            server.poll();
        }
    }
    KXTestClock clock{1000};
    KXNetworkLimits limits = KXNetworkLimitsForStrangers();
    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 64};
};

TEST_F(Strangers, ATurnEndsAndIsFairHoweverMuchWaits) {
    ScriptedSocket socket;
    const RawPeer peers[] = {RawPeer(server), RawPeer(server), RawPeer(server)};
    EXPECT_EQ(turn(), Ids());
    socket.incoming = {{"flood" + marker}};
    socket.repeatsLast = true; // from each of them
    set(&KXNetworkLimits::turnMessages, 5);
    EXPECT_EQ(turn(), Ids({0, 1, 2, 0, 1}));
    EXPECT_EQ(turn(), Ids({2, 0, 1, 2, 0})) << "the next goes on where the last was cut short";
    EXPECT_EQ(take(server.receiveNext(nullptr)), std::nullopt) << "until the next poll";
    set(&KXNetworkLimits::turnMessages, -1);
    set(&KXNetworkLimits::turnMilliseconds, 4);
    EXPECT_EQ(turn(1), Ids({1, 2, 0, 1}));
    EXPECT_EQ(turn(100), Ids({2}));
    set(&KXNetworkLimits::turnMilliseconds, 0);
    EXPECT_EQ(turn(), Ids({0})) << "one gets through";
    // A message without an end takes turns, too.
    set(&KXNetworkLimits::longestMessage, -1);
    set(&KXNetworkLimits::turnMilliseconds, 4);
    socket.incoming = {{std::string(1024, 'x')}};
    socket.requests.clear();
    for (int id = 0; id < 3; ++id)
        server._eraseStoredBuffer(id);
    server.poll();
    clock.advance(4);
    EXPECT_EQ(take(server.receiveNext(nullptr)), std::nullopt);
    EXPECT_LE(socket.requests.size(), 64u);
    for (int id = 0; id < 3; ++id)
        EXPECT_LE(server._storedLength(id), 130 * 1024);
}

TEST_F(Strangers, WhatIsSentBeforeLeavingIsHandedOutInTurns) {
    RawPeer first(server), second(server);
    first.send("1" + marker + "2" + marker + "3" + marker + "part");
    first.close();
    second.send("4" + marker + std::string(70'000, 'x'));
    EXPECT_EQ(turns(4).size(), 4u);
    EXPECT_TRUE(eventually([&] { return turn().empty() && server.clientIDList().empty(); }));
    EXPECT_EQ(server._storedLength(0) + server._storedLength(1), 0);

    KXNetworkClient client;
    ASSERT_TRUE(client.connect("127.0.0.1", portOf(server)));
    const int id = acceptOne(server);
    server._sendBufferToClient(id, ("1" + marker + "2" + marker).data(), 16);
    server.disconnectClient(id);
    std::string received;
    EXPECT_TRUE(eventually([&] {
        client.poll();
        while (const auto message = take(client.receiveNext()))
            received += *message;
        return !client.connected();
    }));
    EXPECT_EQ(received, "12");
    EXPECT_EQ(client.state(), KXNetworkConnectionLost);
}

TEST_F(Strangers, NoSendWaitsForThemAndTheSlowAreLetGo) {
    const RawPeer slow(server), other(server);
    set(&KXNetworkLimits::outgoingBytes, 100'000);
    const std::string large(8 << 20, 'x');
    KXNetworkBuffer message(large.data(), 8 << 20), more("more", 4);
    EXPECT_EQ(server.sendBufferToClient(0, &message), (8 << 20) + 7) << "more than the system takes";
    EXPECT_TRUE(server.isClientConnected(0));
    EXPECT_NE(server.sendBufferToClient(0, &more), 11);
    EXPECT_FALSE(server.isClientConnected(0));
    // A host and its own client in one thread, both ways.
    KXNetworkClient client;
    client.setLimits(limits);
    ASSERT_TRUE(client.connect("127.0.0.1", portOf(server)));
    ASSERT_EQ(acceptOne(server), 0);
    set(&KXNetworkLimits::longestMessage, -1);
    client.setLimits(limits);
    KXNetworkBuffer question(large.data(), 8 << 20), answer(large.data(), 8 << 20);
    EXPECT_EQ(client.send(&question) + server.sendBufferToClient(0, &answer), 2 * ((8 << 20) + 7));
    std::optional<std::string> asked, answered;
    EXPECT_TRUE(eventually([&] {
        server.poll();
        client.poll();
        if (!asked)
            asked = take(server.receiveNext(nullptr));
        if (!answered)
            answered = take(client.receiveNext());
        return asked && answered;
    }));
    EXPECT_TRUE(asked == large && answered == large);
    // Taken back, the limit lets the next send wait again, behind what waits.
    server._sendBufferToClient(1, large.data(), 8 << 20);
    set(&KXNetworkLimits::sendRetryMilliseconds, 0);
    set(&KXNetworkLimits::outgoingBytes, -1);
    EXPECT_EQ(server._sendBufferToClient(1, "x", 1), 0);
    EXPECT_FALSE(server.isClientConnected(1));
    // What waits goes first, though there is room already for what comes behind it.
    set(&KXNetworkLimits::outgoingBytes, 16 << 20);
    const RawPeer reader(server);
    server._sendBufferToClient(reader.id, large.data(), 8 << 20);
    std::string got = reader.receive(1 << 20);
    server._sendBufferToClient(reader.id, "more", 4);
    for (const std::size_t length = large.size() + 4; got.size() < length; server.poll())
        got += reader.receive(std::min<std::size_t>(length - got.size(), 100'000));
    EXPECT_TRUE(got == large + "more");
}

TEST_F(Strangers, TheSilentAreLetGo) {
    const RawPeer silent(server), speaker(server);
    speaker.send(marker);
    EXPECT_EQ(turns(1), Ids({1}));
    pass(10);
    EXPECT_EQ(server.clientIDList(), Ids({0, 1}));
    clock.advance(3'600'000); // in which the game did not listen
    server.poll();
    EXPECT_EQ(server.clientIDList(), Ids({1}));
    pass(40);
    speaker.send("still" + marker);
    EXPECT_EQ(turns(1), Ids({1}));
    pass(60);
    EXPECT_EQ(server.clientIDList(), Ids({1}));
    speaker.send("no whole message");
    pass(1);
    EXPECT_EQ(server.clientIDList(), Ids());
    // Open as at first, silence is no fault.
    server.setLimits({});
    const RawPeer guest(server);
    pass(1000);
    EXPECT_EQ(server.clientIDList(), Ids({0}));
}

TEST_F(Strangers, OneAddressGetsSoManySlotsAndMayBeRefused) {
    set(&KXNetworkLimits::clientsPerAddress, 2);
    const RawPeer first(server), second(server), third(server, false), fourth(server, false);
    EXPECT_TRUE(eventually(
        [&] { return server.checkForIncomingConnections() == -1 && third.isClosed() && fourth.isClosed(); }));
    const std::string peer = server.peerAddress(0);
    EXPECT_TRUE(peer.starts_with("127.0.0.1:") && peer != server.clientAddress(0) &&
                peer != server.peerAddress(1))
        << peer;
    EXPECT_EQ(server.peerAddress(2), nullptr);
    for (const char* none : {"", "nobody", "127.0.0.1:99999", "127.0.0.1:", "[::1", ":80", "[]:80"})
        EXPECT_FALSE(server.refuseAddress(none) || server.admitAddress(none)) << none;
    EXPECT_FALSE(server.refuseAddress(nullptr) || server.admitAddress("192.0.2.1"));
    EXPECT_TRUE(server.refuseAddress(peer.c_str()) && server.refuseAddress("[2001:db8:1:2:3::4]:80"));
    EXPECT_EQ(server.refusedAddresses(), (std::vector<std::string>{"127.0.0.1", "2001:db8:1:2::"}));
    EXPECT_TRUE(first.isClosed() && second.isClosed() && server.clientIDList().empty());
    const RawPeer refused(server, false);
    EXPECT_TRUE(eventually([&] { return server.checkForIncomingConnections() == -1 && refused.isClosed(); }));
    EXPECT_TRUE(server.admitAddress("127.0.0.1") && server.admitAddress("2001:db8:1:2:ffff::"));
    EXPECT_EQ(RawPeer(server).id, 0);
}

// Writes nothing, and hears of every question.
struct CountingTape final : _KXTape {
    bool replays() const override { return false; }
    void keep(_KXQuestion, std::int64_t) override { ++questions; }
    bool give(_KXQuestion, std::int64_t&) override { return false; }
    void keepText(const char*) override { ++questions; }
    bool giveText(std::string&) override { return false; }
    KXSize largestWindow() const override { return {}; }
    int questions = 0;
};

TEST_F(Strangers, NoRecordingHearsOfThem) {
    CountingTape tape;
    _KXRunningTape = &tape;
    const RawPeer peer(server);
    turn();
    KXNetworkClient client;
    client.beginConnecting("127.0.0.1", portOf(server));
    client.poll();
    server.setLimits({});
    server.setSendRetryLimit(0);
    const std::string large(64 << 20, 'x');
    EXPECT_LT(server._sendBufferToClient(0, large.data(), 64 << 20), 64 << 20);
    _KXRunningTape = nullptr;
    EXPECT_EQ(tape.questions, 0) << "when they come depends on others: a replay could not answer";
}
} // namespace
