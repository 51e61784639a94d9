#include <Kobaltrix/KXNetworkBuffer.h>

#include "net/NetTest.h"

#include <climits>
#include <cmath>
#include <new>
#include <tuple>

namespace {
std::string bytesOf(const KXNetworkBuffer& buffer) {
    return take(buffer.buffer(), static_cast<std::size_t>(buffer.bufferLength()));
}

TEST(NetworkBuffer, LongsTravelAsNibblesAndForeignBytesAreRead) {
    KXNetworkBuffer buffer;
    for (const long value :
         {0x12345678L, -1L, LONG_MAX, LONG_MIN, INT_MIN + 5L, static_cast<long>(0x180000005LL)}) {
        buffer.appendLong(value);
        EXPECT_EQ(buffer.readLong(), static_cast<int>(value));
    }
    EXPECT_EQ(bytesOf(buffer).substr(0, 9), "\x08\x07\x06\x05\x04\x03\x02\x01\x0f");
    // Bytes that no sender writes.
    const std::pair<std::string, long> foreign[] = {
        {"\x80\0\0\0\0\0\0\x07"s, -128},     {"\0\x80\0\0\0\0\0\0"s, -2048},
        {"\0\0\0\0\0\x80\0\0"s, -134217728}, {"\0\0\0\0\0\0\x80\0"s, INT_MIN},
        {"\0\0\0\0\0\0\0\x80"s, 0},          {"\x7f\x01\0\0\0\0\x7f\0"s, 0x7F00007F}};
    for (const auto& [bytes, read] : foreign)
        EXPECT_EQ(KXNetworkBuffer(bytes.data(), 8).readLong(), read);
    KXNetworkBuffer junk("\0\0\x80\x3fJUNK\0\0\xc0\x7f----", 16); // which readers of floats skip
    EXPECT_TRUE(junk.readFloat() == 1 && std::isnan(junk.readFloat()));
    KXNetworkBufferPutL(nullptr, 1);
    KXNetworkBufferPutF(nullptr, 1);
    EXPECT_TRUE(KXNetworkBufferGetL(nullptr) == 0 && KXNetworkBufferGetF(nullptr) == 0);
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

TEST(NetworkBuffer, PastTheEndItReadsZeros) {
    // What is read of ten bytes, where that leaves the buffer, and how many of the bytes and zeros come.
    const int rows[][4] = {{0, INT_MAX, 10, 10}, {8, 100, 18, 10}, {10, 3, 13, 3}, {4, INT_MIN, 4, 0}};
    for (const auto& [first, second, readIndex, count] : rows) {
        KXNetworkBuffer buffer("0123456789", 10), temporary("0123456789", 10);
        std::string read = "0123456789\0\0\0\0\0\0\0\0"s.substr(static_cast<std::size_t>(first));
        read.resize(static_cast<std::size_t>(count));
        std::free(buffer.readString(first));
        EXPECT_EQ(take(buffer.readString(second), read.size()), read);
        temporary.readStringTemp(first);
        EXPECT_STREQ(temporary.readStringTemp(second), read.c_str());
        for (const KXNetworkBuffer* each : {&buffer, &temporary})
            EXPECT_EQ(each->description(),
                      "KXNetworkBuffer: _bufLen(10), _readIndex(" + std::to_string(readIndex) + ")");
    }
    for (int cut = 0; cut <= 8; ++cut) {
        KXNetworkBuffer buffer("\x08\x09\x0a\x0b\x0c\x0d\x0e\x07", cut);
        EXPECT_EQ(buffer.readLong(), 0x7EDCBA98 & ((1LL << 4 * cut) - 1));
        EXPECT_FALSE(buffer.hasMoreData());
        EXPECT_EQ(buffer.readFloat(), 0) << "and so it goes on";
    }
}

TEST(NetworkBuffer, LargeOnes) {
    // Copying everything for each of these appends would move terabytes.
    KXNetworkBuffer buffer;
    for (int i = 0; i < 1'000'000; ++i)
        buffer.appendLong(i * 2147L);
    for (int i = 0; i < 1'000'000; ++i)
        ASSERT_EQ(buffer.readLong(), i * 2147L);
    // More than a buffer can hold is refused before anything is read or changed.
    EXPECT_THROW(buffer.appendString("x", INT_MAX - 7'999'999), std::bad_alloc);
    for (int i = 0; i < 300; ++i)
        buffer.readStringTemp(INT_MAX);
    EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(8000000), _readIndex(2147483647)");
}

TEST(NetworkBuffer, Merge) {
    KXNetworkBuffer three("abc", 3), two("\0z", 2), none(nullptr, 5), negative("abc", -5);
    none.appendString("abc", INT_MIN);
    none.appendString(nullptr, 3);
    three.readStringTemp(2);
    const std::tuple<const KXNetworkBuffer*, const KXNetworkBuffer*, std::string> rows[] = {
        {&three, &none, "abc"},  {&three, &two, "abc\0z"s}, {&three, &three, "abcabc"},
        {nullptr, &two, "\0z"s}, {&two, nullptr, "\0z"s},   {&none, &negative, ""}};
    for (const auto& [first, second, bytes] : rows) {
        const std::unique_ptr<KXNetworkBuffer> merged(KXNetworkMergeBuffers(first, second));
        EXPECT_EQ(merged->hasMoreData(), !bytes.empty()) << "reading starts at the beginning";
        merged->appendString("!", 1); // a buffer like any other
        EXPECT_EQ(bytesOf(*merged), bytes + "!");
    }
}
} // namespace
