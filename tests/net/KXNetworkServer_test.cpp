#include <Kobaltrix/KXNetworkServer.h>

#include "core/ground/ErrorSlot.h"
#include "net/Messages.h"
#include "net/RawPeer.h"
#include "util/KXString.h"

#include <Kobaltrix/KXCore.h>

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <netinet/tcp.h>
#include <new>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

namespace {
using Ids = std::vector<int>;

struct Server : testing::Test {
    ~Server() override { _KXCleanTempStrings(); }

    KXNetworkServer server{"127.0.0.1", 0, 3, 42, 16};
    int port = portOf(server);
};

// Leaves the process only as many descriptors as are in use, while it lives.
class FullDescriptorTable {
public:
    FullDescriptorTable() {
        getrlimit(RLIMIT_NOFILE, &_before);
        rlimit full = _before;
        full.rlim_cur = static_cast<rlim_t>(nextDescriptor());
        setrlimit(RLIMIT_NOFILE, &full);
    }
    ~FullDescriptorTable() { setrlimit(RLIMIT_NOFILE, &_before); }
    FullDescriptorTable(const FullDescriptorTable&) = delete;
    FullDescriptorTable& operator=(const FullDescriptorTable&) = delete;

private:
    rlimit _before;
};

TEST(ServerConstruction, Failures) {
    const KXNetworkServer other("127.0.0.1", 0, 1, 0, 1);
    const struct {
        const char* name;
        const char* address;
        int port, maxClients;
        const char* error;
    } rows[] = {{"port in use", "127.0.0.1", portOf(other), 1, "Couldn't bind the socket."},
                {"port in use, any address", nullptr, portOf(other), 1, "Couldn't bind the socket."},
                {"not this machine's", "192.0.2.1", 0, 1, "Couldn't bind the socket."},
                {"unknown name", "..", 0, 1, "Couldn't bind the socket."},
                {"no name", "", 0, 1, "Couldn't bind the socket."},
                {"no port", nullptr, -1, 1, "Couldn't bind the socket."},
                {"no port", nullptr, 65536, 1, "Couldn't bind the socket."},
                {"fewer clients than none", nullptr, 0, -1, ""},
                {"too many clients", nullptr, 0, INT_MAX, ""}};
    const int descriptor = nextDescriptor();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        _KXClearError();
        EXPECT_THROW(KXNetworkServer(row.address, row.port, row.maxClients, 0, 1), std::bad_alloc);
        EXPECT_STREQ(KXError(), row.error);
        EXPECT_EQ(nextDescriptor(), descriptor) << "what was opened is closed";
    }
    EXPECT_THROW(KXNetworkServer(), std::bad_alloc);
    const FullDescriptorTable full;
    EXPECT_THROW(KXNetworkServer(nullptr, 0, 1, 0, 1), std::bad_alloc);
    EXPECT_STREQ(KXError(), "Unable to intialize server socket");
}

TEST(ServerConstruction, StartsAgainAtOnceWhereOneWas) {
    auto server = std::make_unique<KXNetworkServer>("localhost", 0, 1, 0, 1);
    const int port = portOf(*server);
    const RawPeer peer(port);
    EXPECT_EQ(acceptOne(*server), 0);
    server.reset(); // and its end of the connection stays with the system for a while
    EXPECT_TRUE(peer.isClosed());
    EXPECT_NO_THROW(KXNetworkServer("localhost", port, 1, 0, 1));
}

TEST(ServerConstruction, TellsTheAddress) {
    const KXNetworkServer any(nullptr, 0, 0, 0, 1);
    EXPECT_GT(portOf(any), 0);
    EXPECT_EQ(textOf(any.IPAddress()), "0.0.0.0:" + std::to_string(portOf(any)));
    EXPECT_EXIT(
        {
            close(0);
            KXNetworkServer zero("127.0.0.1", 0, 1, 0, 1);
            _exit(zero.IPAddress() == nullptr ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(Server, GivesTheLowestFreeSlot) {
    EXPECT_EQ(server.checkForIncomingConnections(), -1);
    EXPECT_EQ(server.clientIDList(), Ids());
    RawPeer first(port), second(port);
    EXPECT_EQ(acceptOne(server), 0);
    EXPECT_EQ(acceptOne(server), 1);
    server.disconnectClient(0);
    EXPECT_TRUE(first.isClosed());
    EXPECT_FALSE(server.isClientConnected(0));
    EXPECT_EQ(server.clientIDList(), Ids({1}));
    RawPeer third(port), fourth(port), fifth(port);
    EXPECT_EQ(acceptOne(server), 0);
    EXPECT_EQ(acceptOne(server), 2);
    EXPECT_EQ(server.clientIDList(), Ids({0, 1, 2}));
    // The fifth is one too many: accepted and closed.
    EXPECT_TRUE(eventually([&] {
        EXPECT_EQ(server.checkForIncomingConnections(), -1);
        char byte;
        return recv(fifth.socketNumber(), &byte, 1, MSG_DONTWAIT) == 0;
    }));
    EXPECT_EQ(server.clientIDList(), Ids({0, 1, 2}));
    server.disconnectAllClients();
    server.disconnectAllClients();
    EXPECT_EQ(server.clientIDList(), Ids());
    EXPECT_TRUE(second.isClosed() && third.isClosed() && fourth.isClosed());
}

TEST_F(Server, SmallMessagesLeaveAtOnceAndOtherProgramsInheritNothing) {
    const RawPeer peer(port);
    const int accepted = nextDescriptor();
    ASSERT_EQ(acceptOne(server), 0);
    KXNetworkClient client;
    const int connected = nextDescriptor();
    ASSERT_TRUE(client.connect("127.0.0.1", port));
    for (int each : {accepted, connected}) {
        int immediate = 0;
        socklen_t length = sizeof immediate;
        ASSERT_EQ(getsockopt(each, IPPROTO_TCP, TCP_NODELAY, &immediate, &length), 0);
        EXPECT_NE(immediate, 0);
        EXPECT_EQ(fcntl(each, F_GETFD), FD_CLOEXEC);
        EXPECT_TRUE(fcntl(each, F_GETFL) & O_NONBLOCK);
    }
}

TEST_F(Server, IdsOfNoClient) {
    const RawPeer peer(port);
    ASSERT_EQ(acceptOne(server), 0);
    for (int id : {-1, 1, 2, 3, 4, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(id);
        KXNetworkBuffer buffer("abc", 3);
        server.disconnectClient(id);
        EXPECT_FALSE(server.isClientConnected(id) || server._validClient(id));
        EXPECT_EQ(server.sendBufferToClient(id, &buffer), -2);
        EXPECT_EQ(buffer.bufferLength(), 10) << "the marker is appended all the same";
        EXPECT_EQ(server._sendBufferToClient(id, "abc", 3), -2);
        EXPECT_EQ(server.receiveBufferFromClient(id), nullptr);
        EXPECT_EQ(server.clientAddress(id), nullptr);
    }
    EXPECT_TRUE(server.isClientConnected(0) && server._validClient(0));
    EXPECT_EQ(server.clientAddress(0), "127.0.0.1:" + std::to_string(port));
    EXPECT_EQ(textOf(server.IPAddress()), server.clientAddress(0));
}

TEST_F(Server, Sends) {
    RawPeer peers[] = {RawPeer(port), RawPeer(port)};
    for (int id : {0, 1})
        ASSERT_EQ(acceptOne(server), id);
    server.disconnectClient(0);
    RawPeer late(port);
    ASSERT_EQ(acceptOne(server), 0);
    EXPECT_EQ(server._sendBufferToClient(0, "abc", 0), 0);
    EXPECT_EQ(server._sendBufferToClient(0, "abc", INT_MIN), 0);
    EXPECT_EQ(server._sendBufferToClient(0, nullptr, 3), 0);
    EXPECT_EQ(server.sendBufferToClient(0, nullptr), -2);
    EXPECT_EQ(server._sendBufferToClient(0, "a\0c", 3), 3);
    EXPECT_EQ(late.receive(3), "a\0c"s);
    KXNetworkBuffer buffer("12", 2);
    EXPECT_EQ(server.sendBufferToClient(0, &buffer), 9);
    EXPECT_EQ(server.sendBufferToClient(0, &buffer), 16);
    EXPECT_EQ(late.receive(25), "12" + marker + "12" + marker + marker);

    // To all: one more marker for each slot, also for a free one.
    KXNetworkBuffer all("all", 3);
    server._sendBufferToAllClients("-", 1);
    server.disconnectClient(0);
    server.sendBufferToAllClients(&all);
    server.sendBufferToAllClients(nullptr);
    EXPECT_EQ(all.bufferLength(), 3 + 3 * 7);
    EXPECT_EQ(late.receive(100), "-");
    EXPECT_EQ(peers[1].receive(1 + 3 + 14), "-all" + marker + marker);
}

TEST_F(Server, SendsMoreThanTheSystemBuffers) {
    const RawPeer peer(port);
    ASSERT_EQ(acceptOne(server), 0);
    const std::string bytes(8 << 20, 'x');
    const pid_t reader = fork();
    if (reader == 0) {
        alarm(120);
        _exit(peer.receive(bytes.size()) == bytes ? 7 : 8);
    }
    EXPECT_EQ(server._sendBufferToClient(0, bytes.data(), 8 << 20), 8 << 20);
    int status = 0;
    waitpid(reader, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
}

TEST_F(Server, ReceivesOneMessageACall) {
    const RawPeer first(port), second(port);
    for (int id : {0, 1})
        ASSERT_EQ(acceptOne(server), id);
    EXPECT_EQ(server.receiveBufferFromClient(0), nullptr);
    first.send("one" + marker + "two" + marker + "thr");
    second.send("other" + marker);
    EXPECT_EQ(nextFrom(server, 0), "one");
    EXPECT_EQ(nextFrom(server, 1), "other");
    EXPECT_EQ(nextFrom(server, 0), "two");
    EXPECT_EQ(take(server.receiveBufferFromClient(0)), std::nullopt);
    first.send("ee" + marker);
    EXPECT_EQ(nextFrom(server, 0), "three");
    first.send(std::string(3 << 20, 'x') + marker);
    EXPECT_TRUE(nextFrom(server, 0) == std::string(3 << 20, 'x'));
}

TEST_F(Server, WhatALeaverLeavesBehind) {
    for (const bool clears : {false, true}) {
        server.setClearsStoredBuffers(clears);
        for (const bool closesItself : {true, false}) {
            RawPeer leaver(port);
            const int descriptor = nextDescriptor();
            ASSERT_EQ(acceptOne(server), 0);
            leaver.send("whole" + marker + "rest" + marker + "part");
            if (closesItself) {
                leaver.close();
                ASSERT_TRUE(endHasArrived(descriptor));
                EXPECT_EQ(take(server.receiveBufferFromClient(0)), "whole");
            } else {
                EXPECT_EQ(nextFrom(server, 0), "whole");
                EXPECT_EQ(nextFrom(server, 0), "rest");
                ASSERT_TRUE(eventually([&] {
                    EXPECT_EQ(server.receiveBufferFromClient(0), nullptr);
                    return server._storedLength(0) == 4;
                }));
                server.disconnectClient(0);
            }
            EXPECT_FALSE(server.isClientConnected(0));
            EXPECT_EQ(server.receiveBufferFromClient(0), nullptr);
            EXPECT_EQ(server._storedLength(0) > 0, !clears);

            RawPeer heir(port);
            ASSERT_EQ(acceptOne(server), 0);
            heir.send("new" + marker);
            std::string expected = clears ? "new" : "partnew";
            if (!clears && closesItself) {
                EXPECT_EQ(nextFrom(server, 0), "rest");
            }
            EXPECT_EQ(nextFrom(server, 0), expected);
            server.disconnectClient(0);
        }
    }
}

TEST_F(Server, AFullDescriptorTableIsSurvived) {
    const RawPeer early(port), waiting(port);
    ASSERT_EQ(acceptOne(server), 0);
    {
        const FullDescriptorTable full;
        for (int i = 0; i < 100; ++i)
            ASSERT_EQ(server.checkForIncomingConnections(), -1);
        early.send("served" + marker);
        EXPECT_EQ(nextFrom(server, 0), "served");
    }
    EXPECT_EQ(acceptOne(server), 1) << "it has waited";
    waiting.send("too" + marker);
    EXPECT_EQ(nextFrom(server, 1), "too");
}

TEST(FullServer, DropsTheClientOfTheDescriptorsNumber) {
    // The descriptor that the one too many gets is made a low one.
    const int placeholder = open("/dev/null", O_RDONLY);
    KXNetworkServer server("127.0.0.1", 0, placeholder + 1, 0, 64);
    std::vector<std::unique_ptr<RawPeer>> peers;
    for (int id = 0; id <= placeholder; ++id) {
        peers.push_back(std::make_unique<RawPeer>(portOf(server)));
        ASSERT_EQ(acceptOne(server), id);
    }
    const RawPeer oneTooMany(portOf(server));
    close(placeholder);
    ASSERT_TRUE(eventually([&] {
        EXPECT_EQ(server.checkForIncomingConnections(), -1);
        return !server.isClientConnected(placeholder);
    }));
    EXPECT_TRUE(oneTooMany.isClosed());
    EXPECT_EQ(server.clientIDList().size(), static_cast<std::size_t>(placeholder));
    // Equal to the number of slots, it is nobody's.
    KXNetworkServer none("127.0.0.1", 0, 0, 0, 4);
    const RawPeer refused(portOf(none));
    EXPECT_TRUE(eventually([&] {
        EXPECT_EQ(none.checkForIncomingConnections(), -1);
        char byte;
        return recv(refused.socketNumber(), &byte, 1, MSG_DONTWAIT) == 0;
    }));
}
} // namespace
