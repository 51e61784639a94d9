#include <Kobaltrix/KXIO.h>

#include "util/KXString.h"

#include <Kobaltrix/KXNetworkBuffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <vector>

namespace {
struct IOBuffer : testing::Test {
    ~IOBuffer() override { _KXCleanTempStrings(); }

    const std::unique_ptr<FILE, int (*)(FILE*)> stream{tmpfile(), fclose};
    KXNetworkBuffer buffer;
};

void putEverything(KXIOBuffer io) {
    KXIOPutL(-7, io);
    KXIOPutF(-2.5f, io);
    KXIOPutString("two words", io);
    KXIOPutString(nullptr, io);
    KXIOPutString("", io);
    KXIOPutPoint({1.5f, -1.5f}, io);
    KXIOPutColor({0.25f, 0.5f, 2, -1}, io);
}

// Reads it again.
void expectEverything(KXIOBuffer io, long number) {
    EXPECT_EQ(KXIOGetL(io), number);
    EXPECT_EQ(KXIOGetF(io), -2.5f);
    EXPECT_STREQ(KXIOGetString(io), "two words");
    EXPECT_EQ(KXIOGetString(io), nullptr);
    EXPECT_STREQ(KXIOGetString(io), "");
    const KXPoint point = KXIOGetPoint(io);
    const KXColor color = KXIOGetColor(io);
    EXPECT_EQ((std::vector{point.x, point.y, color.r, color.g, color.b, color.a}),
              (std::vector{1.5f, -1.5f, 0.25f, 0.5f, 2.0f, -1.0f}));
}

TEST_F(IOBuffer, OneSetOfCallsForFilesAndMessages) {
    const KXIOBuffer file = KXIOBufferWith(stream.get(), &buffer), network = KXIOBufferWith(nullptr, &buffer);
    EXPECT_EQ(file.target, stream.get());
    EXPECT_EQ(network.target, &buffer);
    putEverything(file);
    EXPECT_EQ(ftell(stream.get()), 4 + 4 + (4 + 10) + 4 + (4 + 1) + 8 + 16);
    EXPECT_EQ(buffer.bufferLength(), 0);
    rewind(stream.get());
    expectEverything(file, 4294967289); // the sign is a matter of the side: a file gives the bare 32 bits
    putEverything(network);
    EXPECT_EQ(buffer.bufferLength(), 8 + 8 + (8 + 10) + 8 + (8 + 1) + 16 + 32);
    expectEverything(network, -7);
    EXPECT_FALSE(buffer.hasMoreData());
}

TEST_F(IOBuffer, BuffersWithoutATarget) {
    buffer.appendString("12345678", 8);
    const KXIOBuffer nothing = KXIOBufferWith(nullptr, nullptr);
    EXPECT_EQ(nothing.kind, 1);
    for (const KXIOBuffer& io : {nothing, {nullptr, 0}, {&buffer, 2}, {&buffer, -1}, {stream.get(), 2}}) {
        putEverything(io);
        EXPECT_EQ(KXIOGetL(io), 0);
        EXPECT_EQ(KXIOGetF(io), 0.0f);
        EXPECT_EQ(KXIOGetString(io), nullptr);
        EXPECT_EQ(KXIOGetPoint(io).x, 0.0f);
        EXPECT_EQ(KXIOGetColor(io).a, 0.0f);
    }
    EXPECT_STREQ(buffer.description(), "KXNetworkBuffer: _bufLen(8), _readIndex(0)");
    EXPECT_EQ(ftell(stream.get()), 0);
}

TEST_F(IOBuffer, MessagesFromStrangers) {
    const std::pair<long, const char*> messages[] = {
        {INT_MAX, "short"}, {6, "short"}, {3, "sho"}, {0, nullptr}, {INT_MIN, nullptr}};
    for (const auto& [length, text] : messages) {
        KXNetworkBuffer message;
        message.appendLong(length);
        message.appendString("short", 5);
        EXPECT_STREQ(KXIOGetString(KXIOBufferWith(nullptr, &message)), text) << length;
    }
}
} // namespace
