#include "net/Socket.h"

#include "net/ScriptedSocket.h"
#include "support/TestClock.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {
TEST(Socket, SendsInPiecesUntilAllIsTaken) {
    const struct {
        const char* name;
        int length;
        std::deque<int> outcomes;
        bool repeatsLast;
        bool usable;
        int sent;
        std::vector<int> firstRequests;
    } rows[] = {
        {"pieces", 3000, {}, false, true, 3000, {1024, 1024, 952}},
        {"one byte", 1, {}, false, true, 1, {1}},
        {"taken in part", 2000, {1024, 10, 0}, false, true, 2000, {1024, 976, 966, 966}},
        {"refused for a while", 1030, {1024, -EAGAIN, -EAGAIN, 3}, false, true, 1030, {1024, 6, 6, 6, 3}},
        {"interrupted", 10, {-EINTR, -ENOBUFS, 4, -EINTR}, false, true, 10, {10, 10, 10, 6, 6}},
        {"closed", 3000, {1024, -EPIPE}, false, false, 1024, {1024, 1024}},
        {"reset at once", 3000, {-ECONNRESET}, false, false, 0, {1024}},
        {"no memory for ever", 9, {5, -ENOBUFS}, true, false, 5, {9, 4, 4, 4}},
        {"takes nothing for ever", 9, {0}, true, false, 0, {9, 9, 9}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedSocket socket;
        socket.outcomes = row.outcomes;
        socket.repeatsLast = row.repeatsLast;
        const std::string bytes(static_cast<std::size_t>(row.length), 'x');
        int sent = -1;
        EXPECT_EQ(_KXSendAll(-1, bytes.data(), row.length, -1, sent), row.usable);
        EXPECT_EQ(sent, row.sent);
        ASSERT_GE(socket.requests.size(), row.firstRequests.size());
        if (!row.repeatsLast) {
            EXPECT_EQ(socket.requests.size(), row.firstRequests.size());
        }
        socket.requests.resize(row.firstRequests.size());
        EXPECT_EQ(socket.requests, row.firstRequests);
    }
}

TEST(Socket, RetriesAreLimitedInTime) {
    static TestClock* running;
    const std::string bytes(5000, 'x');
    for (const std::uint64_t start : {std::uint64_t(1000), (std::uint64_t(1) << 32) - 20}) // wraps around
        for (const int limit : {0, 1, 50}) {
            TestClock clock(start);
            running = &clock;
            ScriptedSocket socket;
            socket.onCall = [] { running->advance(1); };
            socket.outcomes = {1024, 1024, -EAGAIN};
            socket.repeatsLast = true;
            int sent = -1;
            EXPECT_FALSE(_KXSendAll(-1, bytes.data(), 5000, limit, sent));
            EXPECT_EQ(sent, 2048);
            EXPECT_EQ(socket.requests.size(), 3u + static_cast<unsigned>(limit));
        }
    // A peer that takes a byte now and then does not win time by it.
    TestClock clock;
    running = &clock;
    ScriptedSocket socket;
    socket.onCall = [] { running->advance(10); };
    for (int i = 0; i < 1000; ++i)
        socket.outcomes.push_back(i % 2 ? 1 : -EAGAIN);
    int sent = -1;
    EXPECT_FALSE(_KXSendAll(-1, bytes.data(), 5000, 100, sent));
    EXPECT_EQ(sent, 5);
}

TEST(Socket, FindsAddresses) {
    const struct {
        const char* host;
        int port;
        const char* address; // null: unknown
    } rows[] = {{nullptr, 80, "0.0.0.0:80"},
                {"127.0.0.1", 0, "127.0.0.1:0"},
                {"localhost", 65535, "127.0.0.1:65535"},
                {"192.0.2.255", 1, "192.0.2.255:1"},
                {"", 80, nullptr},
                {"..", 80, nullptr},
                {"::1", 80, nullptr},
                {"127.0.0.1", -1, nullptr},
                {"127.0.0.1", 65536, nullptr}};
    for (const auto& row : rows) {
        _KXSocketAddress address;
        ASSERT_EQ(_KXFindAddress(row.host, row.port, address), row.address != nullptr) << row.host;
        if (row.address) {
            EXPECT_EQ(_KXAddressText(address), row.address);
        }
    }
}

TEST(Socket, AConnectionToItselfIsNone) {
    const _KXSocketOwner socket(_KXOpenSocket());
    _KXSocketAddress address;
    ASSERT_TRUE(_KXFindAddress("127.0.0.1", 0, address));
    ASSERT_TRUE(_KXBind(socket.get(), address));
    EXPECT_FALSE(_KXConnect(socket.get(), address));
}
} // namespace
