#include <Kobaltrix/KXNetworkBuffer.h>

#include "util/KXString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace {
using namespace std::string_literals;

struct NetworkBuffer : testing::Test {
    ~NetworkBuffer() override { _KXCleanTempStrings(); }
};

std::string bytesOf(const KXNetworkBuffer& buffer) {
    char* block = buffer.buffer();
    std::string bytes(block, static_cast<std::size_t>(buffer.bufferLength()));
    std::free(block);
    return bytes;
}

std::string take(char* block, std::size_t length) {
    std::string bytes(block, length);
    std::free(block);
    return bytes;
}

TEST_F(NetworkBuffer, StartsEmpty) {
    EXPECT_EQ(KXNetworkBufferLongSize, 8);
    KXNetworkBuffer buffer;
    EXPECT_EQ(buffer.bufferLength(), 0);
    EXPECT_FALSE(buffer.hasMoreData());
    EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(0), _readIndex(0)");
    EXPECT_EQ(bytesOf(buffer), "");
    // What cannot be appended leaves it so.
    buffer.appendString("", 0);
    buffer.appendString("abc", -1);
    buffer.appendString("abc", INT_MIN);
    buffer.appendString(nullptr, 3);
    EXPECT_EQ(buffer.bufferLength(), 0);
    EXPECT_EQ(KXNetworkBuffer(nullptr, 5).bufferLength(), 0);
    EXPECT_EQ(KXNetworkBuffer("abc", -5).bufferLength(), 0);
    EXPECT_EQ(KXNetworkBuffer("abc", 0).bufferLength(), 0);
}

TEST_F(NetworkBuffer, LongsTravelAsNibblesOfTheirLow32Bits) {
    const struct {
        long value;
        std::string bytes;
        long read;
    } cases[] = {
        {0x12345678, "\x08\x07\x06\x05\x04\x03\x02\x01", 0x12345678},
        {-1, "\x0f\x0f\x0f\x0f\x0f\x0f\x0f\x0f", -1},
        {0, "\0\0\0\0\0\0\0\0"s, 0},
        {5, "\x05\0\0\0\0\0\0\0"s, 5},
        {-2, "\x0e\x0f\x0f\x0f\x0f\x0f\x0f\x0f", -2},
        {0x100000001, "\x01\0\0\0\0\0\0\0"s, 1},
        {0x80000000, "\0\0\0\0\0\0\0\x08"s, -2147483648L},
        {LONG_MIN, "\0\0\0\0\0\0\0\0"s, 0},
        {LONG_MAX, "\x0f\x0f\x0f\x0f\x0f\x0f\x0f\x0f", -1},
    };
    KXNetworkBuffer all;
    std::string expected;
    for (const auto& one : cases) {
        KXNetworkBuffer buffer;
        buffer.appendLong(one.value);
        EXPECT_EQ(bytesOf(buffer), one.bytes) << one.value;
        all.appendLong(one.value);
        expected += one.bytes;
    }
    EXPECT_EQ(bytesOf(all), expected);
    for (const auto& one : cases)
        EXPECT_EQ(all.readLong(), one.read) << one.value;
    EXPECT_FALSE(all.hasMoreData());
}

TEST_F(NetworkBuffer, BytesThatNoSenderWrites) {
    const struct {
        std::string bytes;
        long read;
    } cases[] = {
        {"\x80\0\0\0\0\0\0\0"s, -128},       {"\0\x80\0\0\0\0\0\0"s, -2048},
        {"\0\0\x80\0\0\0\0\0"s, -32768},     {"\0\0\0\x80\0\0\0\0"s, -524288},
        {"\0\0\0\0\x80\0\0\0"s, -8388608},   {"\0\0\0\0\0\x80\0\0"s, -134217728},
        {"\0\0\0\0\0\0\x80\0"s, INT_MIN},    {"\0\0\0\0\0\0\0\x80"s, 0},
        {"\0\0\0\0\0\0\x7f\0"s, 0x7F000000}, {"\x80\0\0\0\0\0\0\x07"s, -128},
        {"\x7f\x01\0\0\0\0\0\0"s, 0x7F},     {"\xff\xff\xff\xff\xff\xff\xff\xff", -1},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(KXNetworkBufferGetL(one.bytes.data()), one.read);
        EXPECT_EQ(KXNetworkBuffer(one.bytes.data(), 8).readLong(), one.read);
    }
    EXPECT_EQ(KXNetworkBufferGetL(nullptr), 0);
    EXPECT_EQ(KXNetworkBufferGetF(nullptr), 0.0f);
    KXNetworkBufferPutL(nullptr, 1);
    KXNetworkBufferPutF(nullptr, 1);
}

TEST_F(NetworkBuffer, FloatsLeaveZerosBehindThem) {
    // Old memory that the allocator hands out again must not go over the wire.
    for (const int size : {8, 16, 32, 64}) {
        char* dirty = static_cast<char*>(std::malloc(static_cast<std::size_t>(size)));
        std::memset(dirty, 0x5A, static_cast<std::size_t>(size));
        std::free(dirty);
        KXNetworkBuffer buffer;
        buffer.appendFloat(1.5f);
        buffer.appendFloat(-0.0f);
        EXPECT_EQ(bytesOf(buffer), "\0\0\xc0\x3f\0\0\0\0\0\0\0\x80\0\0\0\0"s);
    }
    // Readers skip the second half, whatever a sender left there.
    KXNetworkBuffer foreign("\0\0\x80\x3fJUNK\0\0\x80\x7f----", 16);
    EXPECT_EQ(foreign.readFloat(), 1.0f);
    EXPECT_EQ(foreign.readFloat(), INFINITY);
    char four[5] = "zzzz";
    KXNetworkBufferPutF(four, 1.0f);
    EXPECT_EQ(std::string(four, 5), "\0\0\x80\x3f\0"s);
    KXNetworkBuffer number;
    number.appendFloat(NAN);
    EXPECT_TRUE(std::isnan(number.readFloat()));
}

TEST_F(NetworkBuffer, ReadsInTheOrderOfWriting) {
    KXNetworkBuffer buffer;
    buffer.appendLong(5);
    buffer.appendFloat(1.5f);
    EXPECT_EQ(buffer.bufferLength(), 16);
    buffer.appendString("run", 3);
    buffer.appendString("text\0after", 11);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(buffer.readLong(), 5);
        EXPECT_EQ(buffer.readFloat(), 1.5f);
        EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(30), _readIndex(16)");
        EXPECT_EQ(take(buffer.readString(3), 3), "run");
        EXPECT_STREQ(buffer.readStringTemp(11), "text");
        EXPECT_FALSE(buffer.hasMoreData());
        buffer.resetReadIndex();
    }
    EXPECT_TRUE(buffer.hasMoreData());
    // A run without its terminator ends with the run; one longer than a temporary string is cut.
    KXNetworkBuffer runs("%s%n", 4);
    EXPECT_STREQ(runs.readStringTemp(2), "%s");
    EXPECT_STREQ(runs.readStringTemp(2), "%n");
    const std::string longRun(3000, 'r');
    KXNetworkBuffer longBuffer(longRun.data(), 3000);
    EXPECT_EQ(std::string(longBuffer.readStringTemp(2000)), longRun.substr(0, 1023));
    EXPECT_EQ(take(longBuffer.readString(1000), 1000), longRun.substr(0, 1000));
    EXPECT_FALSE(longBuffer.hasMoreData());
}

TEST_F(NetworkBuffer, RunsAreLimitedToTheWholeLengthOnly) {
    const struct {
        int first, second, readIndex;
        std::string read;
    } cases[] = {
        {0, 100, 10, "0123456789"},
        {8, 100, 18, "89\0\0\0\0\0\0\0\0"s},
        {8, 4, 12, "89\0\0"s},
        {10, 3, 13, "\0\0\0"s},
        {4, 0, 4, ""},
        {4, -1, 4, ""},
        {4, INT_MIN, 4, ""},
        {0, INT_MAX, 10, "0123456789"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(testing::Message() << one.first << " then " << one.second);
        KXNetworkBuffer buffer("0123456789", 10), temporary("0123456789", 10);
        std::free(buffer.readString(one.first));
        EXPECT_EQ(take(buffer.readString(one.second), one.read.size()), one.read);
        const std::string description =
            "KXNetworkBuffer: _bufLen(10), _readIndex(" + std::to_string(one.readIndex) + ")";
        EXPECT_EQ(buffer.description(), description);
        temporary.readStringTemp(one.first);
        EXPECT_STREQ(temporary.readStringTemp(one.second), one.read.c_str());
        EXPECT_EQ(temporary.description(), description);
    }
}

TEST_F(NetworkBuffer, CutAtEveryByteItReadsZeros) {
    KXNetworkBuffer whole;
    whole.appendLong(0x7EDCBA98);
    whole.appendFloat(-1234.5f);
    whole.appendString("text", 5);
    const std::string bytes = bytesOf(whole);
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

TEST_F(NetworkBuffer, TheReadPositionDoesNotWrapAround) {
    const std::string content(1 << 20, 'x');
    KXNetworkBuffer buffer(content.data(), 1 << 20);
    for (int i = 0; i < 2050; ++i)
        buffer.readStringTemp(INT_MAX);
    EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(1048576), _readIndex(2147483647)");
    EXPECT_EQ(buffer.readLong(), 0);
    EXPECT_FALSE(buffer.hasMoreData());
    buffer.resetReadIndex();
    EXPECT_STREQ(buffer.readStringTemp(3), "xxx");
}

TEST_F(NetworkBuffer, LargeMessagesTakeLinearTime) {
    // Copying everything for each of these appends would move terabytes.
    KXNetworkBuffer buffer;
    for (int i = 0; i < 1'000'000; ++i)
        buffer.appendLong(i * 2147L);
    ASSERT_EQ(buffer.bufferLength(), 8'000'000);
    for (int i = 0; i < 1'000'000; ++i)
        ASSERT_EQ(buffer.readLong(), i * 2147L);
    EXPECT_FALSE(buffer.hasMoreData());
    // More than a buffer can hold is refused before anything is read or changed.
    EXPECT_THROW(buffer.appendString("x", INT_MAX - 7'999'999), std::bad_alloc);
    EXPECT_EQ(buffer.bufferLength(), 8'000'000);
}

TEST_F(NetworkBuffer, Merge) {
    KXNetworkBuffer three("abc", 3), empty, two("\0z", 2);
    three.readStringTemp(2);
    const struct {
        const KXNetworkBuffer *first, *second;
        std::string bytes;
    } cases[] = {{&three, &empty, "abc"},    {&empty, &three, "abc"}, {&three, &two, "abc\0z"s},
                 {&three, &three, "abcabc"}, {&empty, &empty, ""},    {nullptr, &two, "\0z"s},
                 {&two, nullptr, "\0z"s},    {nullptr, nullptr, ""}};
    for (const auto& one : cases) {
        const std::unique_ptr<KXNetworkBuffer> merged(KXNetworkMergeBuffers(one.first, one.second));
        EXPECT_EQ(bytesOf(*merged), one.bytes);
        EXPECT_EQ(merged->hasMoreData(), !one.bytes.empty()) << "reading starts at the beginning";
        merged->appendLong(7); // a buffer like any other
        EXPECT_EQ(merged->bufferLength(), static_cast<int>(one.bytes.size()) + 8);
    }
    EXPECT_STREQ(three.description(), "KXNetworkBuffer: _bufLen(3), _readIndex(2)") << "left as it was";
    EXPECT_EQ(bytesOf(two), "\0z"s);
}
} // namespace
