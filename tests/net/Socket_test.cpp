#include "net/Socket.h"

#include <KobaltrixTest/KXTestClock.h>

#include "net/ScriptedSocket.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {
constexpr int later = _KXSocketWouldBlock, again = _KXSocketInterrupted, broken = _KXSocketBroken;

TEST(Socket, SendsInPiecesUntilAllIsTaken) {
    // How much is to be sent, what the calls give, whether it succeeds, how much was sent, and the calls.
    const std::tuple<int, std::deque<int>, bool, int, std::vector<int>> rows[] = {
        {3000, {}, true, 3000, {1024, 1024, 952}},
        {2000, {1024, 10, 0}, true, 2000, {1024, 976, 966, 966}},
        {1030, {1024, later, later, 3}, true, 1030, {1024, 6, 6, 6, 3}},
        {10, {again, again, 4, again}, true, 10, {10, 10, 10, 6, 6}},
        {3000, {1024, broken}, false, 1024, {1024, 1024}},
        {9, {5, again, again}, false, 5, {}}, // and so on for ever
        {9, {5, 0, 0}, false, 5, {}}};
    for (const auto& [length, outcomes, succeeds, taken, requests] : rows) {
        ScriptedSocket socket;
        socket.outcomes = outcomes;
        socket.repeatsLast = requests.empty();
        int sent = -1;
        EXPECT_EQ(_KXSendAll(-1, std::string(3000, 'x').data(), length, -1, sent), succeeds);
        EXPECT_EQ(sent, taken);
        EXPECT_TRUE(socket.requests == requests || requests.empty());
    }
}

TEST(Socket, RetriesAreLimitedInTime) {
    const auto sendFor = [](std::uint64_t start, std::uint64_t perCall, int limit, std::deque<int> outcomes) {
        KXTestClock clock(start);
        ScriptedSocket socket;
        socket.onSend = [&] { clock.advance(perCall); };
        socket.outcomes = std::move(outcomes);
        socket.repeatsLast = true;
        int sent = -1;
        EXPECT_FALSE(_KXSendAll(-1, std::string(5000, 'x').data(), 5000, limit, sent));
        return std::pair(sent, static_cast<int>(socket.requests.size()));
    };
    for (const std::uint64_t start : {std::uint64_t(1000), (std::uint64_t(1) << 32) - 20}) // wraps around
        for (const int limit : {0, 1, 50})
            EXPECT_EQ(sendFor(start, 1, limit, {1024, 1024, later}), std::pair(2048, 3 + limit));
    // A peer that takes a byte now and then does not win time by it.
    EXPECT_EQ(sendFor(0, 40, 100, {later, 1, later, 1, later}), std::pair(2, 5));
}

TEST(Socket, FindsAddresses) {
    const auto found = [](const char* host, int port) {
        _KXSocketAddress address;
        return _KXFindAddress(host, port, address) ? _KXAddressText(address) : "unknown";
    };
    EXPECT_EQ(found(nullptr, 80), "0.0.0.0:80");
    EXPECT_EQ(found("127.0.0.1", 0), "127.0.0.1:0");
    EXPECT_EQ(found("localhost", 65535), "127.0.0.1:65535");
    EXPECT_EQ(found("192.0.2.255", 1), "192.0.2.255:1");
    EXPECT_EQ(found("::1", 80) + found("2001:DB8:0::01", 80), "[::1]:80[2001:db8::1]:80");
    EXPECT_EQ(found("::ffff:192.0.2.1", 80), "192.0.2.1:80");
    for (const char* host : {"", "..", "::g"})
        EXPECT_EQ(found(host, 80), "unknown") << host;
    EXPECT_EQ(found("127.0.0.1", -1) + found("127.0.0.1", 65536), "unknownunknown");
}

TEST(Socket, ConnectionsThatAreNone) {
    const _KXSocketOwner socket(_KXOpenSocket());
    _KXSocketAddress address;
    ASSERT_TRUE(_KXFindAddress("127.0.0.1", 0, address) && _KXBind(socket.get(), address));
    EXPECT_FALSE(_KXConnect(_KXSocketOwner(_KXOpenSocket()).get(), address)) << "nobody listens";
    EXPECT_FALSE(_KXConnect(socket.get(), address)) << "it is its own other end";
}
} // namespace
