#include <Kobaltrix/KXIO.h>

#include "util/KXString.h"

#include <Kobaltrix/KXNetworkBuffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>

namespace {
using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;

struct IOBuffer : testing::Test {
    ~IOBuffer() override { _KXCleanTempStrings(); }
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

void expectEverything(KXIOBuffer io) {
    EXPECT_EQ(static_cast<int>(KXIOGetL(io)), -7);
    EXPECT_EQ(KXIOGetF(io), -2.5f);
    EXPECT_STREQ(KXIOGetString(io), "two words");
    EXPECT_EQ(KXIOGetString(io), nullptr);
    EXPECT_STREQ(KXIOGetString(io), "");
    const KXPoint point = KXIOGetPoint(io);
    EXPECT_EQ(point.x, 1.5f);
    EXPECT_EQ(point.y, -1.5f);
    const KXColor color = KXIOGetColor(io);
    EXPECT_EQ(color.r, 0.25f);
    EXPECT_EQ(color.g, 0.5f);
    EXPECT_EQ(color.b, 2.0f);
    EXPECT_EQ(color.a, -1.0f);
}

TEST_F(IOBuffer, OneSetOfCallsForFilesAndMessages) {
    const Stream stream(tmpfile(), fclose);
    KXNetworkBuffer buffer;
    const KXIOBuffer file = KXIOBufferWith(stream.get(), &buffer), network = KXIOBufferWith(nullptr, &buffer);
    EXPECT_EQ(file.target, stream.get());
    EXPECT_EQ(file.kind, 0);
    EXPECT_EQ(network.target, &buffer);
    EXPECT_EQ(network.kind, 1);
    putEverything(file);
    EXPECT_EQ(ftell(stream.get()), 4 + 4 + (4 + 10) + 4 + (4 + 1) + 8 + 16);
    EXPECT_EQ(buffer.bufferLength(), 0);
    rewind(stream.get());
    expectEverything(file);
    putEverything(network);
    EXPECT_EQ(buffer.bufferLength(), 8 + 8 + (8 + 10) + 8 + (8 + 1) + 16 + 32);
    expectEverything(network);
    EXPECT_FALSE(buffer.hasMoreData());
    // The sign is a matter of the side: a file gives the bare 32 bits, a message the number.
    rewind(stream.get());
    EXPECT_EQ(KXIOGetL(file), 4294967289);
    buffer.resetReadIndex();
    EXPECT_EQ(KXIOGetL(network), -7);
}

TEST_F(IOBuffer, BuffersWithoutATarget) {
    const Stream stream(tmpfile(), fclose);
    KXNetworkBuffer buffer("12345678", 8);
    const KXIOBuffer nothing = KXIOBufferWith(nullptr, nullptr);
    EXPECT_EQ(nothing.target, nullptr);
    EXPECT_EQ(nothing.kind, 1);
    const KXIOBuffer all[] = {nothing, {nullptr, 0}, {&buffer, 2}, {&buffer, -1}, {stream.get(), 2}};
    for (const KXIOBuffer& io : all) {
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
    const struct {
        long length;
        const char *content, *text;
    } messages[] = {
        {INT_MAX, "short", "short"}, {6, "short", "short"},  {3, "short", "sho"}, {0, "short", nullptr},
        {-1, "short", nullptr},      {INT_MIN, "", nullptr}, {5, "", ""}};
    for (const auto& one : messages) {
        KXNetworkBuffer buffer;
        buffer.appendLong(one.length);
        buffer.appendString(one.content, static_cast<int>(std::string(one.content).size()));
        EXPECT_STREQ(KXIOGetString(KXIOBufferWith(nullptr, &buffer)), one.text) << one.length;
    }
}
} // namespace
