#include "net/StoredBuffers.h"

#include "net/Messages.h"
#include "net/ScriptedSocket.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <random>
#include <vector>

namespace {
using Messages = std::vector<std::string>;

struct Handler : _KXNetworkHandler {
    // One receive of a connection on which these bytes, and no more for now, have arrived.
    std::optional<std::string> receive(std::string_view bytes) {
        if (!bytes.empty())
            socket.incoming.push_back({bytes});
        return take(_receiveFrom(-1, 7, lost));
    }
    // The same by the two operations that it is described by.
    std::optional<std::string> mergeAndHandle(std::string_view bytes) {
        int length = -1;
        char* merged =
            _mergeRecvBufferWithStoredBuffer(7, bytes.data(), static_cast<int>(bytes.size()), length);
        const auto message = take(_handleReceivedBuffer(7, merged, length));
        std::free(merged);
        return message;
    }
    std::optional<std::string> handle(int id, const std::string& bytes) {
        return take(_handleReceivedBuffer(id, bytes.data(), static_cast<int>(bytes.size())));
    }
    std::string merge(int id, const std::string& bytes) {
        int length = -1;
        char* merged =
            _mergeRecvBufferWithStoredBuffer(id, bytes.data(), static_cast<int>(bytes.size()), length);
        const std::string result(merged, static_cast<std::size_t>(length));
        std::free(merged);
        return result;
    }
    ScriptedSocket socket;
    bool lost = false;
};

TEST(Framing, TheOperationsThatReceivingIsMadeOf) {
    Handler handler;
    const struct {
        std::string received;
        std::optional<std::string> message;
        std::string storedAfter;
    } rows[] = {{"abc" + marker, "abc", ""},
                {"ab", std::nullopt, "ab"},
                {"abc" + marker, "abc", ""},
                {"one" + marker + "two" + marker, "one", "two" + marker},
                {"two" + marker, "two", ""},
                {"ab_KX", std::nullopt, "ab_KX"},
                {"ab_KXEOB\0"s, "ab", ""},
                {marker, "", ""},
                {marker + "x", "", "x"},
                {"_KXEOB", std::nullopt, "_KXEOB"},
                {"_KXEO_KXEOB_KXEOB\0_KXEOB"s, "_KXEO_KXEOB", "_KXEOB"}};
    for (const auto& row : rows) {
        EXPECT_EQ(handler.handle(3, row.received), row.message) << row.received;
        EXPECT_EQ(handler.merge(4, ""), "") << "another client's";
        EXPECT_EQ(handler.merge(3, ""), row.storedAfter) << row.received;
        EXPECT_EQ(handler.merge(3, "new"), "new") << "the store was emptied";
    }
    // Handled without being merged, what makes no message goes behind what is stored; what follows a message
    // takes its place.
    handler.handle(3, "old_KX");
    handler.handle(3, "EOB\0"s);
    EXPECT_EQ(handler.handle(3, "whole" + marker), "whole");
    EXPECT_EQ(handler.merge(3, "+"), "old_KXEOB\0+"s);
    handler.handle(3, "old");
    EXPECT_EQ(handler.handle(3, "whole" + marker + "rest"), "whole");
    EXPECT_EQ(handler.merge(3, "+"), "rest+");
    // A marker that came together this way is found by the next receive.
    handler.handle(7, "old_KX");
    handler.handle(7, "EOB\0"s);
    EXPECT_EQ(handler.receive(""), "old");

    handler.handle(3, "three");
    handler.handle(INT_MIN, "far");
    handler._clearStoredBufferForClientID(3);
    handler._clearStoredBufferForClientID(99);
    KXNetworkClearStoredBuffer(nullptr, 3);
    EXPECT_EQ(handler.merge(3, ""), "");
    EXPECT_EQ(handler.merge(INT_MIN, ""), "far");

    int length = -1;
    std::free(handler._mergeRecvBufferWithStoredBuffer(3, nullptr, 5, length));
    EXPECT_EQ(length, 0);
    std::free(handler._mergeRecvBufferWithStoredBuffer(3, "abc", INT_MIN, length));
    EXPECT_EQ(length, 0);
    EXPECT_EQ(handler._handleReceivedBuffer(3, nullptr, 5), nullptr);
    EXPECT_EQ(handler._handleReceivedBuffer(3, "abc", -5), nullptr);
    handler.handle(3, "x");
    EXPECT_THROW(handler._mergeRecvBufferWithStoredBuffer(3, "abc", INT_MAX, length), std::bad_alloc);
    EXPECT_EQ(handler.merge(3, ""), "x") << "left as it was";
}

TEST(Framing, HelpersForGames) {
    const struct {
        const char* first;
        int firstLength;
        const char* second;
        int secondLength;
        std::string joined;
    } rows[] = {{"ab", 2, "\0c", 2, "ab\0c"s},
                {"ab", 1, "c", 0, "a"},
                {"", 0, "c", 1, "c"},
                {nullptr, 3, "c", 1, "c"},
                {"a", INT_MIN, nullptr, 2, ""}};
    for (const auto& row : rows) {
        char* joined = _joinBuffers(row.first, row.firstLength, row.second, row.secondLength);
        EXPECT_EQ(std::string(joined, row.joined.size()), row.joined);
        std::free(joined);
    }
    testing::internal::CaptureStdout();
    _dumpBuffer("%d: ", "a%s", 3);
    _dumpBuffer(nullptr, nullptr, 3);
    _dumpBuffer("none", "abc", -1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "%d: [a][%][s]\n\nnone\n");
}

// Cuts the stream into these parts and receives after each until nothing is left.
template<typename Receive>
Messages cutAndReceive(std::initializer_list<std::string_view> parts, Receive&& receive) {
    Messages messages;
    for (std::string_view part : parts)
        for (auto message = receive(part); message; message = receive({}))
            messages.push_back(*message);
    return messages;
}

TEST(Framing, TheStreamMayBeCutAnywhere) {
    const Messages sent = {"first",  "",         "_KXEO", "_KXEOB", "\0\x0f_KXEOC\0_"s,
                           "_K_KX_", "KXEOB\0"s, "",      "_",      "last"};
    std::string stream;
    for (const std::string& message : sent)
        stream += message + marker;
    const std::string_view all = stream;
    for (std::size_t first = 0; first <= all.size(); ++first)
        for (std::size_t second = first; second <= all.size(); ++second) {
            Handler handler;
            const std::initializer_list<std::string_view> parts = {
                all.substr(0, first), all.substr(first, second - first), all.substr(second)};
            ASSERT_EQ(cutAndReceive(parts, [&](std::string_view part) { return handler.receive(part); }),
                      sent)
                << first << ' ' << second;
            ASSERT_EQ(
                cutAndReceive(parts, [&](std::string_view part) { return handler.mergeAndHandle(part); }),
                sent)
                << first << ' ' << second;
            ASSERT_EQ(handler._storedLength(7), 0);
        }
}

TEST(Framing, ManyMessagesComeOutWhateverTheRhythm) {
    std::mt19937 random(1);
    Messages sent;
    std::string stream;
    for (int i = 0; i < 3000; ++i) {
        const std::size_t length = i % 100 == 7 ? random() % 300'000 : random() % 200;
        std::string& message = sent.emplace_back(length, static_cast<char>('!' + i % 90));
        if (length > 20)
            message.replace(length / 2, 6, "_KXEOB");
        stream += message + marker;
    }
    Handler handler;
    Messages received;
    const auto receive = [&](std::string_view part) {
        if (auto message = handler.receive(part))
            received.push_back(std::move(*message));
    };
    // Mostly too seldom for what comes in, then catching up: the store grows, is moved and shrinks again.
    for (std::string_view left = stream; !left.empty();) {
        const std::size_t count = std::min<std::size_t>(left.size(), random() % 60'000);
        receive(left.substr(0, count));
        left.remove_prefix(count);
        for (unsigned calls = random() % 8 == 0 ? 2000 : random() % 4; calls > 0; --calls)
            receive({});
    }
    while (received.size() < sent.size() && handler._storedLength(7) > 0)
        receive({});
    EXPECT_TRUE(received == sent);
    EXPECT_EQ(handler._storedLength(7), 0);
}

// What a piece of work moved and searched, in bytes.
template<typename Work>
_KXNetworkWork measure(Work&& work) {
    const _KXNetworkWork before = _KXNetworkWorkDone;
    work();
    return {_KXNetworkWorkDone.copied - before.copied, _KXNetworkWorkDone.searched - before.searched};
}

TEST(Framing, WaitingMessagesAreDrainedInLinearTime) {
    for (std::size_t count : {1'000u, 100'000u}) {
        std::string stream;
        for (std::size_t i = 0; i < count; ++i)
            stream += "message" + marker;
        Handler handler;
        const _KXNetworkWork work = measure([&] {
            for (std::size_t i = 0; i < count; ++i)
                ASSERT_EQ(handler.receive(i ? std::string_view() : stream), "message");
        });
        EXPECT_EQ(handler._storedLength(7), 0);
        EXPECT_LE(work.copied, stream.size() * 4);
        EXPECT_LE(work.searched, stream.size());
    }
}

TEST(Framing, AQueueThatStaysLongTakesLinearTime) {
    const std::string message = "message" + marker;
    std::string stream;
    for (int i = 0; i < 74'800; ++i) // just under a power of two, where little room is left behind them
        stream += message;
    Handler handler;
    const _KXNetworkWork work = measure([&] {
        for (int i = 0; i < 200'000; ++i)
            ASSERT_EQ(handler.receive(i ? message : stream), "message");
    });
    const std::size_t received = stream.size() + 200'000 * message.size();
    EXPECT_LE(work.copied, received * 4);
    EXPECT_LE(work.searched, received);
}

TEST(Framing, RoomIsGivenBack) {
    StoredBufferInfo stored;
    const std::string message(1000, 'x');
    for (int i = 0; i < 5000; ++i)
        stored.append((message + marker).data(), 1007);
    stored.append("y", 1); // of a message that goes on
    EXPECT_TRUE(stored.findMessages(INT_MAX));
    EXPECT_GE(stored.capacity(), 5000 * 1007);
    while (const auto taken = take(stored.takeMessage())) {
        ASSERT_EQ(*taken, message);
        ASSERT_LE(stored.capacity(), std::max(4 * stored.length() + 1, 64 * 1024));
    }
    stored.append(marker.data(), 7);
    EXPECT_TRUE(stored.findMessages(INT_MAX));
    EXPECT_EQ(take(stored.takeMessage()), "y");
}

TEST(Framing, ALongMessageInSmallPiecesTakesLinearTime) {
    // Underscores all over: each might begin the marker.
    std::string message(64 << 20, 'x');
    for (std::size_t i = 0; i < message.size(); i += 11)
        message[i] = '_';
    const std::string_view all = message;
    Handler handler;
    const _KXNetworkWork work = measure([&] {
        for (std::size_t at = 0; at < all.size(); at += 1024)
            ASSERT_EQ(handler.receive(all.substr(at, 1024)), std::nullopt);
        ASSERT_TRUE(handler.receive(marker) == message);
    });
    EXPECT_LE(work.copied, message.size() * 4);
    EXPECT_LE(work.searched, message.size() + marker.size());
    EXPECT_EQ(handler._storedLength(7), 0);
}

TEST(Framing, ReadingAsksForSmallPiecesAndEnds) {
    Handler handler;
    const std::string bytes(2500, 'x');
    handler.receive(bytes);
    EXPECT_EQ(handler.socket.requests, (std::vector<int>{1024, 1024, 1024, 1024}))
        << "the last finds nothing";

    // A peer that always has more does not keep the game.
    Handler flooded;
    flooded.socket.incoming.push_back({bytes});
    flooded.socket.repeatsLast = true;
    EXPECT_EQ(take(flooded._receiveFrom(-1, 7, flooded.lost)), std::nullopt);
    EXPECT_FALSE(flooded.lost);
    EXPECT_EQ(flooded._storedLength(7), 16 << 20);
}

TEST(Framing, FailuresWhileReading) {
    using Steps = std::deque<ScriptedSocket::Step>;
    const std::string whole = "abc" + marker;
    const struct {
        const char* name;
        Steps steps;
        bool repeats;
        std::optional<std::string> message;
        bool lost;
        int stored;
    } rows[] = {
        {"nothing", {}, false, std::nullopt, false, 0},
        {"closed", {{"abc"}, {""}}, false, std::nullopt, true, 3},
        {"closed after a message", {{whole}, {""}}, false, "abc", true, 0},
        {"closed after two", {{whole}, {whole}, {""}}, false, "abc", true, 10},
        {"interrupted", {{"a"}, {"", EINTR}, {"bc"}, {"", ENOBUFS}, {marker}}, false, "abc", false, 0},
        {"reset", {{whole}, {"", ECONNRESET}, {""}}, false, "abc", true, 0},
        {"dead", {{whole}, {"", ENOTSOCK}}, true, "abc", true, 0},
        {"interrupted for ever", {{"", EINTR}}, true, std::nullopt, true, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Handler handler;
        handler.socket.incoming = row.steps;
        handler.socket.repeatsLast = row.repeats;
        EXPECT_EQ(take(handler._receiveFrom(-1, 7, handler.lost)), row.message);
        EXPECT_EQ(handler.lost, row.lost);
        EXPECT_EQ(handler._storedLength(7), row.stored);
    }
}

TEST(Framing, FailuresWithBytesBetweenThemAreNotRepeated) {
    Handler handler;
    for (int i = 0; i < 500; ++i) {
        handler.socket.incoming.push_back({"", EINTR});
        handler.socket.incoming.push_back({"x"});
    }
    EXPECT_EQ(handler.receive(marker), std::string(500, 'x'));
    EXPECT_FALSE(handler.lost);
    for (int i = 0; i < 500; ++i) {
        handler.socket.outcomes.push_back(-EINTR);
        handler.socket.outcomes.push_back(1);
    }
    EXPECT_EQ(handler._sendTo(-1, std::string(500, 'x').data(), 500, handler.lost), 500);
    EXPECT_FALSE(handler.lost);
}

TEST(Framing, TheLimitForStrangers) {
    const struct {
        const char* name;
        int limit;
        std::string stream;
        bool lost;
        Messages messages;
    } rows[] = {
        {"the longest", 5, "12345" + marker, false, {"12345"}},
        {"too long", 5, "123456" + marker, true, {}},
        {"the longest, its marker not all there", 5, "12345_KXEOB", false, {}},
        {"too long, unfinished", 5, "123456_KXEOB", true, {}},
        {"many short ones", 5, "1" + marker + "2" + marker + "3" + marker + "4", false, {"1", "2", "3"}},
        {"a short and a long one", 5, "1" + marker + "123456" + marker, true, {}},
        {"markers only", 0, marker + marker + marker, false, {"", "", ""}},
        {"more than nothing", 0, "1" + marker, true, {}},
        {"no limit", -1, std::string(100'000, 'x') + marker, false, {std::string(100'000, 'x')}}};
    for (const auto& row : rows)
        for (const bool atOnce : {true, false}) {
            SCOPED_TRACE(row.name);
            Handler handler;
            handler.setStoredBufferLimit(row.limit);
            Messages messages;
            const std::size_t piece = atOnce || row.limit < 0 ? row.stream.size() : 1;
            for (std::size_t at = 0; at < row.stream.size() && !handler.lost; at += piece)
                for (auto message = handler.receive(std::string_view(row.stream).substr(at, piece)); message;
                     message = handler.receive({}))
                    messages.push_back(*message);
            EXPECT_EQ(handler.lost, row.lost);
            if (atOnce || !row.lost) {
                EXPECT_EQ(messages, row.messages);
            }
            if (row.lost) {
                EXPECT_EQ(handler._storedLength(7), 0) << "the bytes are freed";
            }
        }
}

TEST(Framing, WithALimitWaitingMessagesAreLeftToTheSystem) {
    Handler handler;
    handler.setStoredBufferLimit(100);
    handler.socket.repeatsLast = true;
    const std::string flood = "flood" + marker;
    handler.socket.incoming.push_back({flood});
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(take(handler._receiveFrom(-1, 7, handler.lost)), "flood");
        ASSERT_LE(handler._storedLength(7), 100 + 1024);
    }
    EXPECT_FALSE(handler.lost);
}

TEST(Framing, BehindAMessageLittleIsReadAtATime) {
    constexpr int behind = 64 * 1024, piece = 1024;
    const std::string message(100'000, 'x');
    std::string stream;
    for (int i = 0; i < 20; ++i)
        stream += message + marker;
    Handler handler;
    handler.socket.incoming.push_back({stream});
    for (int i = 0; i < 20;) {
        const auto received = take(handler._receiveFrom(-1, 7, handler.lost));
        ASSERT_TRUE(!received || *received == message);
        i += received.has_value();
        ASSERT_LE(handler._storedLength(7), static_cast<int>(message.size()) + behind + piece);
    }
    EXPECT_EQ(handler._storedLength(7), 0);
}
} // namespace
