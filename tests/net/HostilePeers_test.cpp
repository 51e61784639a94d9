// Strangers on the line: whatever they do, the server goes on and the friend beside them is served.

#include "net/RawPeer.h"

#include <csignal>
#include <memory>
#include <sys/wait.h>
#include <vector>

namespace {
constexpr int longest = 10'000; // bytes of a message

struct HostilePeers : testing::Test {
    HostilePeers() {
        server.setStoredBufferLimit(longest);
        server.setSendRetryLimit(0);
        server.setClearsStoredBuffers(true);
        EXPECT_TRUE(friendly.connect("127.0.0.1", port));
        EXPECT_EQ(acceptOne(server), 0);
    }
    // Every stranger's test ends with this.
    ~HostilePeers() override {
        KXNetworkBuffer hello("hello", 5), answer("answer", 6);
        friendly.send(&hello);
        EXPECT_EQ(nextFrom(server, 0), "hello");
        server.sendBufferToClient(0, &answer);
        EXPECT_EQ(nextFrom(friendly), "answer");
    }

    // Polls as a game does, one message of each client a step, until the stranger's id is free or the count
    // of messages is reached.
    std::size_t play(int id, std::size_t count) {
        std::size_t messages = 0;
        eventually([&] {
            server.checkForIncomingConnections();
            EXPECT_EQ(server.receiveBufferFromClient(0), nullptr);
            messages += take(server.receiveBufferFromClient(id)).has_value();
            mostStored = std::max(mostStored, server._storedLength(id));
            return messages == count || !server.isClientConnected(id);
        });
        return messages;
    }

    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 64};
    int port = portOf(server);
    KXNetworkClient friendly;
    int mostStored = 0;
};

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST_F(HostilePeers, WhatTheySend) {
    const std::string atMost(longest, 'x');
    const struct {
        const char* name;
        std::string sends;
        void (*thenDoes)(RawPeer& peer);
        std::size_t messages;
        bool staysConnected;
    } rows[] = {
        {"connects and leaves", "", [](RawPeer& peer) { peer.close(); }, 0, false},
        {"connects and resets", "", [](RawPeer& peer) { peer.reset(); }, 0, false},
        {"says no more from the start", "", [](RawPeer& peer) { peer.endSending(); }, 0, false},
        {"leaves within a message", "part_KX", [](RawPeer& peer) { peer.close(); }, 0, false},
        {"resets within a message", "part_KX", [](RawPeer& peer) { peer.reset(); }, 0, false},
        {"half closes within a message", "part_KX", [](RawPeer& peer) { peer.endSending(); }, 0, false},
        {"half closes after one", "one" + marker, [](RawPeer& peer) { peer.endSending(); }, 1, false},
        {"sends only markers", repeated(marker, 5000), [](RawPeer&) {}, 5000, true},
        {"sends markers cut short", repeated("_KXEOB", 1000) + marker, [](RawPeer&) {}, 1, true},
        {"sends zeros", std::string(5000, '\0') + marker, [](RawPeer&) {}, 1, true},
        {"sends the longest message", atMost + marker, [](RawPeer&) {}, 1, true},
        {"sends one too long", atMost + "x" + marker, [](RawPeer&) {}, 0, false},
        {"sends one that does not end", atMost + atMost, [](RawPeer&) {}, 0, false},
        {"sends web requests", "GET / HTTP/1.1\r\n\r\n" + repeated("x: y\r\n", 2000), [](RawPeer&) {}, 0,
         false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RawPeer stranger(port);
        ASSERT_EQ(acceptOne(server), 1);
        // Not asked whether it succeeds: the server may have had enough before.
        stranger.send(row.sends);
        row.thenDoes(stranger);
        EXPECT_EQ(play(1, row.staysConnected ? row.messages : SIZE_MAX), row.messages);
        EXPECT_EQ(server.isClientConnected(1), row.staysConnected);
        EXPECT_EQ(server.receiveBufferFromClient(1), nullptr);
        EXPECT_EQ(server._storedLength(1), 0) << "nothing is left for the next of that id";
        server.disconnectClient(1);
    }
}

// A process that sends without end, until it can no more.
pid_t startFlood(int port, const std::string& bytes) {
    const pid_t process = fork();
    if (process == 0) {
        alarm(120);
        const RawPeer peer(port);
        while (peer.send(bytes)) {
        }
        _exit(0);
    }
    return process;
}

TEST_F(HostilePeers, AFloodOfSmallMessagesIsHeldBack) {
    const pid_t process = startFlood(port, repeated("flood" + marker, 5000));
    ASSERT_EQ(acceptOne(server), 1);
    EXPECT_EQ(play(1, 20'000), 20'000u);
    EXPECT_LE(mostStored, longest + 1024);
    server.disconnectClient(1);
    waitpid(process, nullptr, 0);
}

TEST_F(HostilePeers, AFloodWithoutEndIsCutOff) {
    const pid_t process = startFlood(port, std::string(1 << 20, 'x'));
    ASSERT_EQ(acceptOne(server), 1);
    EXPECT_EQ(play(1, SIZE_MAX), 0u);
    EXPECT_FALSE(server.isClientConnected(1));
    EXPECT_LE(mostStored, longest + 7);
    waitpid(process, nullptr, 0);
}

TEST_F(HostilePeers, AFloodWithoutLimitsDoesNotKeepTheServerEither) {
    server.setStoredBufferLimit(-1);
    const pid_t process = startFlood(port, repeated("flood" + marker, 5000));
    ASSERT_EQ(acceptOne(server), 1);
    EXPECT_EQ(play(1, 5), 5u);
    server.disconnectClient(1);
    waitpid(process, nullptr, 0);
}

TEST_F(HostilePeers, OneThatNeverReadsIsGivenUp) {
    const std::string bytes(64 << 20, 'x');
    const RawPeer stranger(port);
    ASSERT_EQ(acceptOne(server), 1);
    const int sent = server._sendBufferToClient(1, bytes.data(), 64 << 20);
    EXPECT_TRUE(sent > 0 && sent < 64 << 20) << sent;
    EXPECT_FALSE(server.isClientConnected(1));
    EXPECT_EQ(server._sendBufferToClient(1, "x", 1), -2);
}

TEST_F(HostilePeers, SendingToOneThatIsGoneRaisesNoSignal) {
    ASSERT_NE(signal(SIGPIPE, SIG_DFL), SIG_ERR); // which would end this program
    for (const bool resets : {false, true}) {
        RawPeer stranger(port);
        ASSERT_EQ(acceptOne(server), 1);
        resets ? stranger.reset() : stranger.close();
        EXPECT_TRUE(eventually([&] { return server._sendBufferToClient(1, "x", 1) != 1; }));
        EXPECT_FALSE(server.isClientConnected(1));
    }
}

TEST_F(HostilePeers, AFloodOfConnections) {
    std::vector<std::unique_ptr<RawPeer>> crowd;
    std::size_t accepted = 0;
    for (int round = 0; round < 50; ++round) {
        // More than there are slots, some of which are gone before they are accepted.
        for (int i = 0; i < 8; ++i)
            crowd.push_back(std::make_unique<RawPeer>(port));
        for (std::size_t i = crowd.size() - 4; i < crowd.size(); ++i)
            i % 2 ? crowd[i]->reset() : crowd[i]->close();
        ASSERT_TRUE(eventually([&] {
            accepted += server.checkForIncomingConnections() != -1;
            return server.clientIDList().size() == 4;
        }));
        for (int i = 0; i < 8; ++i) // those without a slot are closed, one a call
            accepted += server.checkForIncomingConnections() != -1;
        EXPECT_TRUE(server.isClientConnected(0));
        for (int id : {1, 2, 3})
            server.disconnectClient(id);
    }
    EXPECT_GE(accepted, 150u);
    // Whoever comes in the end still gets a slot, once those that wait have been looked at.
    crowd.clear();
    const RawPeer late(port);
    late.send("late" + marker);
    bool heard = false;
    EXPECT_TRUE(eventually([&] {
        server.checkForIncomingConnections();
        for (int id : {1, 2, 3})
            heard = heard || take(server.receiveBufferFromClient(id)) == "late";
        return heard;
    }));
}

TEST_F(HostilePeers, ASocketThatHasDiedIsClosed) {
    const RawPeer stranger(port);
    const int descriptor = nextDescriptor();
    ASSERT_EQ(acceptOne(server), 1);
    // Behind the server's back it becomes something that fails each time it is read, and in the same way.
    const int other = open("/dev/null", O_RDONLY);
    ASSERT_EQ(dup2(other, descriptor), descriptor);
    close(other);
    EXPECT_EQ(server.receiveBufferFromClient(1), nullptr);
    EXPECT_FALSE(server.isClientConnected(1));
}
} // namespace
