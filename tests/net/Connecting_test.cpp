// Connecting while the game goes on, and over IPv6.

#include "net/Connecting.h"

#include "net/NetTest.h"
#include "support/System.h"

#include <KobaltrixTest/KXTestClock.h>

#include <atomic>
#include <tuple>

namespace {
struct ConnectingLater : testing::Test {
    // Polls until it is known how it ends.
    KXNetworkState end() {
        EXPECT_TRUE(eventually([this] {
            client.poll();
            return client.state() != KXNetworkLookingUp && client.state() != KXNetworkConnecting;
        }));
        EXPECT_EQ(client.connected(), client.state() == KXNetworkConnected);
        return client.state();
    }
    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 16};
    const int port = portOf(server);
    KXNetworkClient client;
};

// A name that takes until it is told to: what it stands for, or nothing.
std::atomic<bool> isTold = false;
std::atomic<int> asked = 0;
std::vector<_KXSocketAddress> slowLookUp(const char* host, int port) {
    ++asked;
    while (!isTold)
        std::this_thread::yield();
    --asked;
    return std::string_view(host) == "known" ? _KXFindAddresses("127.0.0.1", port)
                                             : std::vector<_KXSocketAddress>();
}
struct SlowNames {
    SlowNames() { _KXLookUp = slowLookUp; }
    ~SlowNames() {
        isTold = true;
        _KXLookUp = _KXFindAddresses;
    }
    // Those who ask, of whom there is one at least.
    static void tell() {
        EXPECT_TRUE(eventually([] { return asked > 0; }));
        isTold = true;
        EXPECT_TRUE(eventually([] { return asked == 0; }));
        isTold = false;
    }
};

TEST_F(ConnectingLater, EndsAsItEnds) {
    const int closed = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
    const std::tuple<const char*, int, KXNetworkState> rows[] = {
        {"127.0.0.1", port, KXNetworkConnected},     {"localhost", port, KXNetworkConnected},
        {"127.0.0.1", closed, KXNetworkNobodyThere}, {"..", port, KXNetworkNameUnknown},
        {"127.0.0.1", 65536, KXNetworkNobodyThere},  {nullptr, port, KXNetworkNameUnknown},
        {"localhost", closed, KXNetworkNobodyThere}};
    EXPECT_EQ(client.state(), KXNetworkNotConnected);
    // The system keeps something of its own for the first, and Windows for some of the threads that look
    // names up; what is left open by one of these is left open each time.
    constexpr int times = 8;
    long open = 0;
    for (int i = 0; i <= times; ++i) {
        for (const auto& [host, to, state] : rows) {
            SCOPED_TRACE(&host - &std::get<0>(rows[0]));
            client.beginConnecting(host, to);
            EXPECT_EQ(end(), state);
            EXPECT_TRUE(state != KXNetworkConnected || acceptOne(server) == 0);
            client.disconnect();
            EXPECT_EQ(client.state(), KXNetworkNotConnected);
            server.disconnectAllClients();
        }
        if (i == 0)
            open = openFiles();
    }
    EXPECT_LT(openFiles(), open + times);
    EXPECT_FALSE(client.connect("127.0.0.1", closed));
    EXPECT_EQ(client.state(), KXNetworkNobodyThere);
    EXPECT_TRUE(client.connect("127.0.0.1", port));
    EXPECT_EQ(client.state(), KXNetworkConnected);
}

TEST_F(ConnectingLater, NoNameKeepsTheGameWaiting) {
    SlowNames names;
    KXTestClock clock(1000);
    client.beginConnecting("known", port);
    EXPECT_EQ(client.state(), KXNetworkLookingUp);
    EXPECT_TRUE(!client.connected() && !client.receiveNext() && client._send("x", 1) == -2);
    names.tell();
    EXPECT_EQ(end(), KXNetworkConnected);
    client.beginConnecting("unknown", port);
    EXPECT_FALSE(client.connected()) << "the earlier connection is closed";
    names.tell();
    EXPECT_EQ(end(), KXNetworkNameUnknown);
    client.beginConnecting("known", port, 500);
    clock.advance(500);
    EXPECT_EQ(end(), KXNetworkTimedOut);
    client.beginConnecting("known", port);
    client.disconnect();
    EXPECT_EQ(end(), KXNetworkNotConnected);
    // Given up they go on for a while, but never are there more than a few; the last one waits for its turn.
    for (int i = 0; i < 20; ++i)
        KXNetworkClient().beginConnecting("known", port);
    EXPECT_TRUE(eventually([] { return asked >= 8; }) && asked == 8);
    client.beginConnecting("known", port);
    names.tell();
    EXPECT_TRUE(eventually([this] {
        client.poll();
        return asked == 1;
    }));
    names.tell();
    EXPECT_EQ(end(), KXNetworkConnected);
}

TEST_F(ConnectingLater, WhoeverAnswersFirst) {
    // A server that is full of connections nobody accepts answers no other.
    _KXSocketAddress full;
    ASSERT_TRUE(_KXFindAddress("127.0.0.2", port, full));
    const _KXSocketOwner deaf(_KXOpenSocket());
    ASSERT_TRUE(_KXBind(deaf.get(), full) && _KXListen(deaf.get(), 0));
    std::vector<std::unique_ptr<_KXSocketOwner>> crowd;
    for (bool answers = true; answers && crowd.size() < 20;) {
        crowd.push_back(std::make_unique<_KXSocketOwner>(_KXOpenSocket()));
        answers = _KXBeginConnecting(crowd.back()->get(), full) != _KXConnecting::failed;
    }
    KXTestClock clock(1000);
    client.beginConnecting("127.0.0.2", port, 2000);
    EXPECT_EQ(client.state(), KXNetworkConnecting);
    clock.advance(1999);
    client.poll();
    EXPECT_EQ(client.state(), KXNetworkConnecting);
    clock.advance(1);
    EXPECT_EQ(end(), KXNetworkTimedOut);
    // Of a name with several addresses the next is tried after a moment, and behind one that fails at once.
    _KXLookUp = [](const char*, int to) {
        std::vector<_KXSocketAddress> all;
        for (const char* each : {"127.0.0.3", "127.0.0.2", "127.0.0.1"})
            all.push_back(_KXFindAddresses(each, to).front());
        return all;
    };
    client.beginConnecting("several", port, -1);
    EXPECT_TRUE(eventually([&] {
        client.poll();
        return client.state() == KXNetworkConnecting;
    }));
    EXPECT_EQ(server.checkForIncomingConnections(), -1);
    EXPECT_TRUE(eventually([&] {
        clock.advance(1);
        client.poll();
        return client.connected();
    }));
    EXPECT_EQ(acceptOne(server), 0);
    _KXLookUp = _KXFindAddresses;
}

TEST_F(ConnectingLater, IPv6) {
    _KXSocketAddress own;
    const bool hasIPv6 =
        _KXFindAddress("::1", 0, own) && _KXBind(_KXSocketOwner(_KXOpenSocket(own)).get(), own);
    if (!hasIPv6) { // a machine without it says so
        EXPECT_THROW(KXNetworkServer("::1", 0, 4, 0, 16), std::bad_alloc);
        EXPECT_FALSE(client.connect("::1", port));
        return;
    }
    KXNetworkServer six("::1", 0, 4, 0, 16), both("::", 0, 4, 0, 16);
    EXPECT_EQ(addressOf(six), "[::1]:" + std::to_string(portOf(six)));
    EXPECT_EQ(addressOf(both), "[::]:" + std::to_string(portOf(both)));
    const std::tuple<KXNetworkServer&, const char*, const char*> rows[] = {
        {six, "::1", "[::1]:"}, {both, "::1", "[::1]:"}, {both, "127.0.0.1", "127.0.0.1:"}};
    for (const auto& [at, host, from] : rows) {
        at.disconnectAllClients();
        ASSERT_TRUE(client.connect(host, portOf(at)));
        ASSERT_EQ(acceptOne(at), 0);
        EXPECT_TRUE(std::string(at.peerAddress(0)).starts_with(from)) << at.peerAddress(0);
        client.beginConnecting(host, portOf(at));
        EXPECT_EQ(end(), KXNetworkConnected);
        EXPECT_EQ(client._send(("hello" + marker).data(), 12), 12);
        ASSERT_EQ(acceptOne(at), 1);
        EXPECT_EQ(nextFrom(at, 1), "hello");
    }
    EXPECT_FALSE(client.connect("127.0.0.1", portOf(six))) << "it listens at that one address";
}
} // namespace
