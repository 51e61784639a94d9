#include <Kobaltrix/KXNetworkBuffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {
using namespace std::string_literals;

std::string take(char* block, std::size_t length) {
    std::string bytes(block, length);
    std::free(block);
    return bytes;
}

std::string bytesOf(const KXNetworkBuffer& buffer) {
    return take(buffer.buffer(), static_cast<std::size_t>(buffer.bufferLength()));
}

TEST(NetworkBuffer, LongsTravelAsNibblesOfTheirLow32Bits) {
    const std::pair<std::string, std::vector<long>> sent[] = {
        {"\x08\x07\x06\x05\x04\x03\x02\x01", {0x12345678}},
        {"\x0f\x0f\x0f\x0f\x0f\x0f\x0f\x0f", {-1, LONG_MAX}},
        {"\0\0\0\0\0\0\0\0"s, {0, LONG_MIN}},
        {"\x05\0\0\0\0\0\0\x08"s, {INT_MIN + 5, 0x180000005}}};
    for (const auto& [bytes, values] : sent)
        for (long value : values) {
            KXNetworkBuffer buffer;
            buffer.appendLong(value);
            EXPECT_EQ(bytesOf(buffer), bytes) << value;
            EXPECT_EQ(buffer.readLong(), static_cast<int>(value));
        }
    // Bytes that no sender writes.
    const std::pair<std::string, long> foreign[] = {

        {"\x80\0\0\0\0\0\0\x07"s, -128},     {"\0\x80\0\0\0\0\0\0"s, -2048},
        {"\0\0\0\0\0\x80\0\0"s, -134217728}, {"\0\0\0\0\0\0\x80\0"s, INT_MIN},
        {"\0\0\0\0\0\0\0\x80"s, 0},          {"\x7f\x01\0\0\0\0\x7f\0"s, 0x7F00007F}};
    for (const auto& [bytes, read] : foreign)
        EXPECT_EQ(KXNetworkBuffer(bytes.data(), 8).readLong(), read);
    EXPECT_TRUE(KXNetworkBufferGetL(nullptr) == 0 && KXNetworkBufferGetF(nullptr) == 0);
    KXNetworkBufferPutL(nullptr, 1);
    KXNetworkBufferPutF(nullptr, 1);
}

TEST(NetworkBuffer, FloatsLeaveZerosBehindThem) {
    KXNetworkBuffer buffer;
    buffer.appendFloat(1.5f);
    buffer.appendFloat(-0.0f);
    EXPECT_EQ(bytesOf(buffer), "\0\0\xc0\x3f\0\0\0\0\0\0\0\x80\0\0\0\0"s);
    // Readers skip the second half, whatever a sender left there.
    KXNetworkBuffer foreign("\0\0\x80\x3fJUNK\0\0\xc0\x7f----", 16);
    EXPECT_EQ(foreign.readFloat(), 1.0f);
    EXPECT_TRUE(std::isnan(foreign.readFloat()));
    char four[] = "zzzzz";
    KXNetworkBufferPutF(four, 1.0f);
    EXPECT_EQ(std::string(four, 5), "\0\0\x80\x3fz"s);
}

TEST(NetworkBuffer, ReadsInTheOrderOfWriting) {
    KXNetworkBuffer buffer;
    buffer.appendLong(5);
    buffer.appendFloat(1.5f);
    buffer.appendString("%s%n", 4);
    buffer.appendString("text\0after", 11);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(buffer.readLong(), 5);
        EXPECT_EQ(buffer.readFloat(), 1.5f);
        EXPECT_STREQ(buffer.readStringTemp(2), "%s"); // without a terminator it ends with the run
        EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(31), _readIndex(18)");
        EXPECT_EQ(take(buffer.readString(2), 2), "%n");
        EXPECT_STREQ(buffer.readStringTemp(11), "text");
        buffer.resetReadIndex();
    }
}

TEST(NetworkBuffer, RunsAreLimitedToTheWholeLengthOnly) {
    // What is read, where that leaves the buffer, and how many of the ten bytes and the zeros behind them
    // come.
    const int rows[][4] = {
        {0, INT_MAX, 10, 10}, {8, 100, 18, 10}, {8, 4, 12, 4}, {10, 3, 13, 3}, {4, INT_MIN, 4, 0}};
    for (const auto& [first, second, readIndex, count] : rows) {
        KXNetworkBuffer buffer("0123456789", 10), temporary("0123456789", 10);
        const std::string read = "0123456789\0\0\0\0\0\0\0\0"s.substr(static_cast<std::size_t>(first),
                                                                      static_cast<std::size_t>(count));
        std::free(buffer.readString(first));
        EXPECT_EQ(take(buffer.readString(second), read.size()), read);
        temporary.readStringTemp(first);
        EXPECT_STREQ(temporary.readStringTemp(second), read.c_str());
        for (const KXNetworkBuffer* each : {&buffer, &temporary})
            EXPECT_EQ(each->description(),
                      "KXNetworkBuffer: _bufLen(10), _readIndex(" + std::to_string(readIndex) + ")");
    }
}

TEST(NetworkBuffer, CutAtEveryByteItReadsZeros) {
    const std::string bytes = "\x08\x09\x0a\x0b\x0c\x0d\x0e\x07\x12\x34\x56\x78\0\0\0\0text\0"s;
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        std::string padded = bytes.substr(0, cut);
        padded.resize(bytes.size());
        KXNetworkBuffer buffer(bytes.data(), static_cast<int>(cut));
        EXPECT_EQ(buffer.readLong(), KXNetworkBufferGetL(padded.data()));
        EXPECT_EQ(buffer.readFloat(), KXNetworkBufferGetF(padded.data() + 8));
        EXPECT_STREQ(buffer.readStringTemp(5), padded.substr(16).c_str());
        EXPECT_FALSE(buffer.hasMoreData());
        EXPECT_EQ(buffer.readLong(), 0) << "and so it goes on";
    }
}

TEST(NetworkBuffer, TheReadPositionDoesNotWrapAround) {
    const std::string content(1 << 20, 'x');
    KXNetworkBuffer buffer(content.data(), 1 << 20);
    for (int i = 0; i < 2050; ++i) // each is cut to the length of a temporary string
        ASSERT_EQ(std::string(buffer.readStringTemp(INT_MAX)).size(), i ? 0u : 1023u);
    EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(1048576), _readIndex(2147483647)");
    EXPECT_EQ(buffer.readLong(), 0);
    EXPECT_FALSE(buffer.hasMoreData());
}

TEST(NetworkBuffer, LargeMessagesTakeLinearTime) {
    // Copying everything for each of these appends would move terabytes.
    KXNetworkBuffer buffer;
    for (int i = 0; i < 1'000'000; ++i)
        buffer.appendLong(i * 2147L);
    for (int i = 0; i < 1'000'000; ++i)
        ASSERT_EQ(buffer.readLong(), i * 2147L);
    // More than a buffer can hold is refused before anything is read or changed.
    EXPECT_THROW(buffer.appendString("x", INT_MAX - 7'999'999), std::bad_alloc);
    EXPECT_EQ(buffer.bufferLength(), 8'000'000);
}

TEST(NetworkBuffer, Merge) {
    KXNetworkBuffer three("abc", 3), empty, two("\0z", 2), none(nullptr, 5), negative("abc", -5);
    for (int length : {0, -1, INT_MIN})
        empty.appendString("abc", length);
    empty.appendString(nullptr, 3);
    three.readStringTemp(2);
    const struct {
        const KXNetworkBuffer *first, *second;
        std::string bytes;
    } rows[] = {{&three, &empty, "abc"}, {&three, &two, "abc\0z"s}, {&three, &three, "abcabc"},
                {nullptr, &two, "\0z"s}, {&two, nullptr, "\0z"s},   {nullptr, nullptr, ""},
                {&none, &negative, ""}};
    for (const auto& row : rows) {
        const std::unique_ptr<KXNetworkBuffer> merged(KXNetworkMergeBuffers(row.first, row.second));
        EXPECT_EQ(merged->hasMoreData(), !row.bytes.empty()) << "reading starts at the beginning";
        merged->appendString("!", 1); // a buffer like any other
        EXPECT_EQ(bytesOf(*merged), row.bytes + "!");
    }
    EXPECT_STREQ(three.description(), "KXNetworkBuffer: _bufLen(3), _readIndex(2)") << "left as it was";
}
} // namespace
