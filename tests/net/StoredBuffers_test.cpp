#include "net/StoredBuffers.h"

#include "net/Connection.h"
#include "net/NetTest.h"
#include "net/ScriptedSocket.h"

#include <climits>
#include <new>
#include <random>
#include <tuple>

namespace {
using Messages = std::vector<std::string>;
using Message = std::optional<std::string>;

struct Handler : _KXNetworkHandler {
    // One receive of a connection on which these bytes, and no more for now, have arrived.
    Message receive(std::string bytes = {}) {
        if (!bytes.empty())
            socket.incoming.push_back({std::move(bytes)});
        const _KXReceived received = _receiveFrom(connection, 7, false);
        lost = received.lost;
        return take(received.message);
    }
    // The two operations that receiving is described by.
    std::string merge(int id, const std::string& bytes) {
        int length = -1;
        char* merged =
            _mergeRecvBufferWithStoredBuffer(id, bytes.data(), static_cast<int>(bytes.size()), length);
        return take(merged, static_cast<std::size_t>(length));
    }
    Message handle(int id, const std::string& bytes) {
        return take(_handleReceivedBuffer(id, bytes.data(), static_cast<int>(bytes.size())));
    }
    ScriptedSocket socket;
    _KXConnection connection;
    bool lost = false;
};

TEST(Framing, TheOperationsThatReceivingIsMadeOf) {
    Handler handler;
    const std::tuple<std::string, Message, std::string> rows[] = {
        // what is handled, the message in it, what is stored then
        {"ab_KX", {}, "ab_KX"},
        {"one" + marker + "two" + marker, "one", "two" + marker},
        {"_KXEO_KXEOB_KXEOB\0_KXEOB"s, "_KXEO_KXEOB", "_KXEOB"}};
    for (const auto& [received, message, stored] : rows) {
        EXPECT_EQ(handler.handle(3, received), message);
        for (const auto& [id, merged] : {std::pair(4, ""s), std::pair(3, stored), std::pair(3, ""s)})
            EXPECT_EQ(handler.merge(id, "+"), merged + "+"); // another client's, and an emptied one's
    }
    // Handled without being merged, what makes no message goes behind what is stored; what follows a message
    // takes its place; and a marker that came together this way is found by the next receive.
    for (const std::string& rest : {""s, "rest"s}) {
        handler.handle(7, "old_KX");
        handler.handle(7, "EOB\0"s);
        EXPECT_EQ(handler.handle(7, "whole" + marker + rest), "whole");
        EXPECT_EQ(rest.empty() ? handler.receive() : handler.merge(7, ""), rest.empty() ? "old" : rest);
    }
    handler.handle(3, "three");
    handler.handle(INT_MIN, "far");
    handler._clearStoredBufferForClientID(3);
    KXNetworkClearStoredBuffer(nullptr, 3);
    EXPECT_EQ(handler.merge(3, "") + handler.merge(INT_MIN, ""), "far");

    handler.handle(3, "x");
    int length = -1;
    EXPECT_THROW(handler._mergeRecvBufferWithStoredBuffer(3, "abc", INT_MAX, length), std::bad_alloc);
    std::free(handler._mergeRecvBufferWithStoredBuffer(3, "abc", INT_MIN, length));
    EXPECT_EQ(length, 1) << "the store was left as it was";
    std::free(handler._mergeRecvBufferWithStoredBuffer(3, nullptr, 5, length));
    EXPECT_EQ(length, 0);
    EXPECT_FALSE(handler._handleReceivedBuffer(3, nullptr, 5) || handler._handleReceivedBuffer(3, "a", -1));
}

TEST(Framing, HelpersForGames) {
    EXPECT_EQ(take(_joinBuffers("ab", 2, "\0c", 2), 4), "ab\0c"s);
    EXPECT_EQ(take(_joinBuffers(nullptr, 3, "c", 1), 1) + take(_joinBuffers("a", 1, "c", INT_MIN), 1), "ca");
    testing::internal::CaptureStdout();
    _dumpBuffer("%d: ", "a%s", 3);
    _dumpBuffer(nullptr, nullptr, 3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "%d: [a][%][s]\n\n");
}

TEST(Framing, TheStreamMayBeCutAnywhere) {
    const Messages sent = {"first",  "",         "_KXEO", "_KXEOB", "\0_KXEOC\0_"s,
                           "_K_KX_", "KXEOB\0"s, "",      "_",      "last"};
    std::string stream;
    for (const std::string& message : sent)
        stream += message + marker;
    for (std::size_t first = 0; first <= stream.size(); ++first)
        for (std::size_t second = first; second <= stream.size(); ++second) {
            Handler handler;
            Messages received;
            for (const std::string& part :
                 {stream.substr(0, first), stream.substr(first, second - first), stream.substr(second)})
                for (Message message = handler.receive(part); message; message = handler.receive())
                    received.push_back(*message);
            ASSERT_EQ(received, sent) << first << ' ' << second;
        }
}

TEST(Framing, ManyMessagesComeOutWhateverTheRhythm) {
    std::mt19937 random(1);
    Messages sent, received;
    std::string stream;
    for (int i = 0; i < 3000; ++i) {
        sent.emplace_back(i % 100 == 7 ? random() % 300'000 : random() % 200,
                          static_cast<char>('!' + i % 90));
        stream += sent.back() + marker;
    }
    StoredBufferInfo stored;
    // Mostly too seldom for what comes in, then catching up: the store grows, is moved and shrinks again.
    for (std::string_view left = stream; !left.empty() || stored.length() > 0;) {
        const std::string_view part = left.substr(0, random() % 60'000);
        left.remove_prefix(part.size());
        stored.append(part.data(), static_cast<int>(part.size()));
        EXPECT_TRUE(stored.findMessages(INT_MAX));
        for (unsigned calls = random() % 8 == 0 ? 2000 : random() % 4; calls > 0 && stored.hasMessage();
             --calls)
            received.push_back(*take(stored.takeMessage()));
    }
    EXPECT_TRUE(received == sent);
    EXPECT_LE(stored.capacity(), 64 * 1024) << "the room is given back";
}

TEST(Framing, ReceivingTakesLinearTime) {
    const std::string each = "message" + marker;
    std::string queue, message(16 << 20, 'x');
    for (int i = 0; i < 74'800; ++i) // just under a power of two, where little room is left behind them
        queue += each;
    for (std::size_t i = 0; i < message.size(); i += 11)
        message[i] = '_'; // each might begin the marker
    const _KXNetworkWork before = _KXNetworkWorkDone;
    Handler handler; // with whom the queue stays as long as it is
    for (int i = 0; i < 200'000; ++i)
        ASSERT_EQ(handler.receive(i ? each : queue), "message");
    handler._eraseStoredBuffer(7);
    handler.socket.incoming.clear(); // what was never asked for was never read
    for (std::size_t at = 0; at < message.size(); at += 1024)
        ASSERT_EQ(handler.receive(message.substr(at, 1024)), std::nullopt);
    ASSERT_TRUE(handler.receive(marker) == message);
    const std::size_t ahead = 65 * 1024, received = each.size() * 200'000 + ahead + message.size();
    EXPECT_LE(_KXNetworkWorkDone.copied - before.copied, received * 4);
    EXPECT_LE(_KXNetworkWorkDone.searched - before.searched, received);
}

TEST(Framing, FailuresAndTheLimitForStrangers) {
    constexpr int again = _KXSocketInterrupted, broken = _KXSocketBroken;
    using Steps = std::deque<ScriptedSocket::Step>;
    // The limit, what arrives, the messages, whether the connection is lost, and how much waits in the end.
    const std::tuple<int, Steps, Messages, bool, int> rows[] = {
        {-1, {{"abc"}, {""}}, {}, true, 3},
        {-1, {{"abc" + marker}, {"abc" + marker}, {""}}, {"abc"}, true, 10},
        {-1, {{"a"}, {"", again}, {"bc"}, {"", again}, {marker}}, {"abc"}, false, 0},
        {-1, Steps(1000, {"", again}), {}, true, 0},
        {-1, Steps(1000, {"", broken}), {}, true, 0},
        {5, {{"12345" + marker}, {"1" + marker}}, {"12345", "1"}, false, 0},
        {5, {{"123456" + marker}}, {}, true, 0},
        {5, {{"12345_KXEOB"}}, {}, false, 11}, // its marker is not all there
        {5, {{"123456_KXEOB"}}, {}, true, 0},
        {5, {{"123456"}}, {}, true, 0}, // what can be no marker counts at once
        {5, {{"1234_KXEx"}}, {}, true, 0},
        {5, {{"1" + marker + "123456" + marker + "2" + marker}}, {"1"}, true, 0}, // in the order of sending
        {5, {{"1" + marker + "2" + marker + "123456"}}, {"1", "2"}, true, 0},
        {0, {{marker}, {marker}}, {"", ""}, false, 0},
        {0, {{"1" + marker}}, {}, true, 0}};
    for (const auto& row : rows) {
        const auto& [limit, steps, messages, lost, stored] = row;
        SCOPED_TRACE(&row - rows);
        Handler handler;
        handler.setStoredBufferLimit(limit);
        handler.socket.incoming = steps;
        Messages received;
        for (Message message; !handler.lost && (message = handler.receive());)
            received.push_back(*message);
        EXPECT_EQ(received, messages);
        EXPECT_TRUE(handler.lost == lost && handler._storedLength(7) == stored);
    }
    // Failures with bytes between them are not repeated, neither in receiving nor in sending.
    Handler handler;
    for (int i = 0; i < 500; ++i) {
        handler.socket.incoming.insert(handler.socket.incoming.end(), {{"", again}, {"x"}});
        handler.socket.outcomes.insert(handler.socket.outcomes.end(), {again, 1});
    }
    EXPECT_EQ(handler.receive(marker), std::string(500, 'x'));
    int sent = 0;
    EXPECT_TRUE(handler.connection.send(std::string(500, 'x').data(), 500, {}, sent) && sent == 500);
}

TEST(Framing, NoReceiveReadsWithoutEnd) {
    const std::string large(100'000, 'x');
    // What arrives over and over, the limit, how often it is received, each message, and how much waits.
    const std::tuple<std::string, int, int, Message, int> rows[] = {
        {std::string(2500, 'x'), -1, 1, {}, 16 << 20},
        {"flood" + marker, 100, 1000, "flood", 100}, // the rest waits with the system
        {std::string(993, 'x') + marker, -1, 1000, std::string(993, 'x'), 64 * 1024},
        {large + marker, -1, 20, large, 100'007 + 64 * 1024}};
    for (const auto& [arrives, limit, receives, message, most] : rows) {
        Handler handler;
        handler.setStoredBufferLimit(limit);
        handler.socket.incoming = {{arrives}};
        handler.socket.repeatsLast = true;
        for (int i = 0; i < receives; ++i) {
            ASSERT_EQ(handler.receive(), message);
            ASSERT_LE(handler._storedLength(7), most + 1024);
        }
        EXPECT_TRUE(!handler.lost && handler.socket.requests.back() == 1024);
    }
}
} // namespace
