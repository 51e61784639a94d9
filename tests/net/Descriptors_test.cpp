// What only those systems have where a socket is a file's number, and a process makes another like itself.

#include "net/NetTest.h"

#include <cerrno>
#include <random>
#include <vector>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
/// The descriptor that will be given next.
int nextDescriptor() { return _KXSocketOwner(_KXOpenSocket()).get(); }

struct Descriptors : testing::Test {
    static bool refuses(KXNetworkServer& server, const RawPeer& peer) {
        return eventually([&] { return server.checkForIncomingConnections() == -1 && peer.isClosed(); });
    }

    KXNetworkServer server{"127.0.0.1", 0, 4, 0, 16};
    const int port = portOf(server);
    KXNetworkClient client;
};

TEST_F(Descriptors, TheLowestIsNoExceptionButForBeingLeftOpen) { // and a server with it tells no address
    const auto connects = [this] { return client.connect("127.0.0.1", port) && client.connected(); };
    const auto worksWithoutInput = [&] {
        close(0);
        const bool connected = !KXNetworkServer("127.0.0.1", 0, 1, 0, 1).IPAddress() && connects();
        const int next = nextDescriptor();
        return connected && connects() && nextDescriptor() > next;
    };
    EXPECT_EXIT(_exit(worksWithoutInput() ? 7 : 8), testing::ExitedWithCode(7), "");
}

TEST_F(Descriptors, DropsTheClientOfTheRefusedDescriptorsNumber) {
    // The descriptor that the one too many gets is made a low one.
    const int placeholder = open("/dev/null", O_RDONLY);
    KXNetworkServer full("127.0.0.1", 0, placeholder + 1, 0, 64), none("127.0.0.1", 0, 0, 0, 4);
    std::vector<std::unique_ptr<RawPeer>> peers;
    for (int id = 0; id <= placeholder; ++id)
        ASSERT_EQ(peers.emplace_back(std::make_unique<RawPeer>(full))->id, id);
    const RawPeer tooMany(full, false), refused(none, false);
    close(placeholder);
    EXPECT_TRUE(refuses(full, tooMany) && refuses(none, refused));
    EXPECT_TRUE(full.clientIDList().back() == placeholder - 1 && full.clientIDList().front() == 0);
}

TEST_F(Descriptors, SmallMessagesLeaveAtOnceAndOtherProgramsInheritNothing) {
    const int accepted = nextDescriptor() + 1;
    const RawPeer peer(server);
    const int connected = nextDescriptor();
    ASSERT_TRUE(client.connect("127.0.0.1", portOf(server)));
    for (int each : {accepted, connected}) {
        int immediate = 0;
        socklen_t length = sizeof immediate;
        ASSERT_EQ(getsockopt(each, IPPROTO_TCP, TCP_NODELAY, &immediate, &length), 0);
        EXPECT_NE(immediate, 0);
        EXPECT_EQ(fcntl(each, F_GETFD), FD_CLOEXEC);
        EXPECT_TRUE(fcntl(each, F_GETFL) & O_NONBLOCK);
    }
}

TEST_F(Descriptors, AFullServerRefusesAllThatWaitAndDropsNobody) {
    // The lowest free descriptor is the id of a client.
    const int placeholder = open("/dev/null", O_RDONLY);
    KXNetworkServer full("127.0.0.1", 0, placeholder + 1, 0, 64);
    std::vector<std::unique_ptr<RawPeer>> peers, late;
    for (int id = 0; id <= placeholder; ++id)
        peers.push_back(std::make_unique<RawPeer>(full));
    full.setLimits(KXNetworkLimitsForStrangers());
    for (int i = 0; i < 20; ++i)
        late.push_back(std::make_unique<RawPeer>(full, false));
    close(placeholder);
    EXPECT_EQ(full.checkForIncomingConnections(), -1);
    for (const auto& each : late)
        EXPECT_EQ(each->receive(1), "");
    EXPECT_EQ(full.clientIDList().size(), peers.size());
}

TEST_F(Descriptors, DeadPeersAreAskedForBySystem) {
    server.setLimits(KXNetworkLimitsForStrangers());
    const int accepted = nextDescriptor() + 1;
    const RawPeer peer(server);
    client.setLimits(KXNetworkLimitsForStrangers());
    const int connected = nextDescriptor();
    ASSERT_TRUE(client.connect("127.0.0.1", portOf(server)));
    for (const int each : {accepted, connected}) {
        int on = 0, seconds = 0;
        socklen_t length = sizeof on;
        EXPECT_TRUE(getsockopt(each, SOL_SOCKET, SO_KEEPALIVE, &on, &length) == 0 && on != 0);
        EXPECT_TRUE(getsockopt(each, IPPROTO_TCP, TCP_KEEPIDLE, &seconds, &length) == 0 && seconds == 20);
    }
}

TEST_F(Descriptors, ErrorNumbersOfTheSystem) {
    for (const int error : {EPIPE, ECONNRESET, ENOTSOCK})
        EXPECT_EQ(_KXSocketFailureOf(error), _KXSocketBroken);
    for (const int error : {EINTR, ENOBUFS})
        EXPECT_EQ(_KXSocketFailureOf(error), _KXSocketInterrupted);
}

TEST_F(Descriptors, MessagesOfAllLengthsComeBackFromAnotherProcess) {
    if (fork() == 0) {
        client.connect("localhost", port);
        while (const auto message = nextFrom(client)) {
            KXNetworkBuffer answer(message->data(), static_cast<int>(message->size()));
            client.send(&answer);
        }
        _exit(0);
    }
    ASSERT_EQ(acceptOne(server), 0);
    std::mt19937 random(1);
    for (int i = 0; i < 10'000; ++i) {
        // Mostly small messages, some of many kilobytes, one more than the system buffers.
        std::string message(i == 5000 ? 8 << 20 : random() % (i % 100 ? 100 : 100'000), 0);
        for (char& byte : message)
            byte = static_cast<char>(random() >> 24);
        KXNetworkBuffer buffer(message.data(), static_cast<int>(message.size()));
        ASSERT_EQ(server.sendBufferToClient(0, &buffer), static_cast<int>(message.size()) + 7);
        ASSERT_TRUE(nextFrom(server, 0) == message) << i;
    }
    server.disconnectClient(0); // which ends the other process
    wait(nullptr);
}
} // namespace
