#include <Kobaltrix/KXIO.h>

#include "core/ground/Endianness.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <Kobaltrix/KXNetworkBuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <functional>
#include <memory>
#include <sstream>
#include <tuple>
#include <vector>

namespace {
using namespace std::string_literals;
using Put = std::function<bool(FILE*)>; // true for success
using Stream = std::unique_ptr<FILE, decltype([](FILE* file) { fclose(file); })>;

// A stream that holds these bytes, to be read.
Stream reading(const std::string& bytes) {
    Stream stream(tmpfile());
    fwrite(bytes.data(), 1, bytes.size(), stream.get());
    rewind(stream.get());
    return stream;
}

// What a successful operation puts on a stream.
std::string written(const Put& put, bool succeeds = true) {
    Stream stream(tmpfile());
    EXPECT_EQ(put(stream.get()), succeeds);
    std::string bytes(static_cast<std::size_t>(ftell(stream.get())), 0);
    rewind(stream.get());
    EXPECT_EQ(fread(bytes.data(), 1, bytes.size(), stream.get()), bytes.size());
    return bytes;
}

// One of everything but texts, in this order: a long, a float, a rectangle, which is a point and a size, a
// colour.
const std::vector<float> all = {-2, 1.5f, 3.5f, 4.5f, 5, 6, 0.25f, -0.5f, 2, 1};

bool putAll(FILE* file) {
    return KXPutL(-2, file) == -2 && KXPutF(1.5f, file) == 1 &&
           KXPutRect({{3.5f, 4.5f}, {5.9f, 6.1f}}, file) && KXPutColor({0.25f, -0.5f, 2, 1}, file);
}

std::vector<float> getAll(FILE* file) {
    const auto number = static_cast<float>(static_cast<int>(KXGetL(file)));
    const float fraction = KXGetF(file);
    const KXRect rect = KXGetRect(file);
    const KXColor color = KXGetColor(file);
    return {number,           fraction, rect.origin.x, rect.origin.y, rect.size.width,
            rect.size.height, color.r,  color.g,       color.b,       color.a};
}

struct ValueIO : testing::Test {
    ~ValueIO() override { _KXCleanTempStrings(); }
};

TEST_F(ValueIO, NumbersAreLittleEndian) {
    const std::tuple<long long, std::string, long long> numbers[] = {
        {-1, "\xff\xff\xff\xff", 4294967295}, // -1 again where a long has 32 bits
        {0x1122334455, "\x55\x44\x33\x22", 0x22334455},
        {-2147483648LL, "\0\0\0\x80"s, 2147483648},
        {LLONG_MIN, "\0\0\0\0"s, 0}};
    for (const auto& [number, bytes, read] : numbers) {
        EXPECT_EQ(
            written([value = static_cast<long>(number)](FILE* file) { return KXPutL(value, file) == value; }),
            bytes);
        EXPECT_EQ(KXGetL(reading(bytes).get()), static_cast<long>(read));
    }
    // The largest long would read as the failure -1 in its low 32 bits.
    constexpr long long largest = LONG_MAX > INT_MAX ? 9223371487098961920 : 2147483520;
    const std::pair<float, long long> floats[] = {{1.0f, 1},
                                                  {-1.5f, -1},
                                                  {-0.0f, 0},
                                                  {3e9f, 3000000000},
                                                  {-INFINITY, LLONG_MIN},
                                                  {INFINITY, largest},
                                                  {-0x1p62f, -0x4000000000000000},
                                                  {NAN, 0}};
    for (const auto& [value, number] : floats) {
        const std::string bytes(reinterpret_cast<const char*>(&value), sizeof value);
        const long long result = std::clamp<long long>(number, LONG_MIN, largest);
        EXPECT_EQ(written([=, v = value](FILE* file) { return KXPutF(v, file) == result; }), bytes);
        EXPECT_EQ(std::bit_cast<int>(KXGetF(reading(bytes).get())), std::bit_cast<int>(value)) << value;
    }
    _KXEndianness = 0;
    EXPECT_EQ(written([](FILE* file) { return KXPutL(0x01020304, file) != -1; }), "\1\2\3\4");
    EXPECT_EQ(KXGetL(reading("\1\2\3\4").get()), 0x01020304);
    _KXEndianness = -1;
}

TEST_F(ValueIO, StructuresComeBackAsStoredAsFarAsStreamsGo) {
    const std::string bytes = written(putAll);
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        std::vector<float> expected = all;
        for (std::size_t i = cut / 4; i < all.size(); ++i)
            expected[i] = i == 0 || i == 4 || i == 5 ? -1 : 0; // whole numbers end as -1, fractions as 0
        EXPECT_EQ(getAll(reading(bytes.substr(0, cut)).get()), expected) << cut;
    }
    EXPECT_EQ(bytes.size(), 40u);
}

TEST_F(ValueIO, ExtentsAreTruncatedAndMinusOneReadsAsAFailure) {
    const std::pair<float, int> cases[] = {{7.9f, 7},        {-0.9f, 0},        {-1.5f, -1},     {-2, -2},
                                           {1e30f, INT_MAX}, {-1e30f, INT_MIN}, {3e9f, INT_MAX}, {NAN, 0}};
    for (const auto& [value, stored] : cases)
        for (const KXPoint point : {KXPoint{value, 0}, {0, value}}) {
            SCOPED_TRACE(value);
            const KXSize size = {point.x, point.y};
            const bool succeeds = stored != -1;
            const std::string sizeBytes = written([=](FILE*file) { return KXPutSize(size, file); }, succeeds),
                              bytes = written([=](FILE*file) { return KXPutPoint(point, file); }, succeeds);
            const KXSize read = KXGetSize(reading(sizeBytes).get());
            EXPECT_EQ(read.width + read.height, static_cast<float>(stored));
            const KXPoint back = KXGetPoint(reading(bytes).get());
            EXPECT_TRUE(std::isnan(value) || (back.x == point.x && back.y == point.y));
            EXPECT_EQ(written([=](FILE* file) { return KXPutRect({point, size}, file); }), bytes + sizeBytes);
        }
}

TEST_F(ValueIO, Strings) {
    const std::pair<const char*, std::string> texts[] = {
        {"", "\1\0\0\0\0"s},
        {"hero %s%n%%", "\x0c\0\0\0hero %s%n%%\0"s},
        {"\u00e9 \U0001F3AE", "\x08\0\0\0\xc3\xa9 \xf0\x9f\x8e\xae\0"s},
        {nullptr, "\0\0\0\0"s}};
    for (const auto& [text, bytes] : texts) {
        EXPECT_EQ(written([t = text](FILE* file) { return KXPutString(t, file); }), bytes);
        EXPECT_STREQ(KXGetString(reading(bytes).get()), text);
    }
    // What is read of a damaged text, and where reading goes on.
    const std::tuple<std::string, const char*, long> damaged[] = {
        {"\0\0\0\0rest"s, nullptr, 4},
        {"\xff\xff\xff\xffrest", nullptr, 4},
        {"\4\0\0\0ab\0d"s + "rest", "ab", 8},   // a terminator before the end
        {"\4\0\0\0abcd"s + "rest", "abcd", 8},  // none at all
        {"\xff\xff\xff\x7fshort"s, "short", 9}, // a length that the file cannot hold
        {"\xff\xff\xff\x7f"s, "", 4},           //
        {"\5\0\0"s, nullptr, 3},                // cut in the length
    };
    for (const auto& [stored, text, next] : damaged) {
        const Stream stream = reading(stored);
        EXPECT_STREQ(KXGetString(stream.get()), text);
        EXPECT_EQ(ftell(stream.get()), next);
    }
    // All of a long text is stored and read past, but a temporary string holds 1023 bytes.
    for (const std::size_t length : {1022u, 1023u, 1024u, 5119u, 5120u, 100'000u}) {
        const std::string text(length, 't');
        const Stream stream =
            reading(written([&](FILE* file) { return KXPutString(text.c_str(), file); }) + "next");
        EXPECT_EQ(std::string(KXGetString(stream.get())), text.substr(0, 1023));
        EXPECT_EQ(KXGetL(stream.get()), 0x7478656e) << length;
    }
}

TEST_F(ValueIO, StreamsThatTakeOrHoldNothing) {
    const TemporaryFolder folder;
    const Stream full(fopen("/dev/full", "w")),
        readOnly(fopen(folder.write("file", std::string(64, 1)).c_str(), "r"));
    setvbuf(full.get(), nullptr, _IONBF, 0);
    for (FILE* file : {full.get(), readOnly.get(), static_cast<FILE*>(nullptr)}) {
        EXPECT_EQ(KXPutL(7, file), -1);
        EXPECT_EQ(KXPutF(7, file), -1);
        EXPECT_FALSE(KXPutPoint({1, 2}, file));
        EXPECT_FALSE(KXPutSize({1, 2}, file));
        EXPECT_TRUE(KXPutRect({{1, 2}, {3, 4}}, file));
        EXPECT_FALSE(KXPutColor({1, 2, 3, 4}, file));
        EXPECT_FALSE(KXPutString("text", file));
        EXPECT_EQ(KXGetString(file), nullptr) << "not with the error flag up, even if its bytes are there";
        EXPECT_EQ(KXStreamIsIntact(file), 0);
    }
    EXPECT_EQ(getAll(nullptr), getAll(reading("").get()));
}

struct IOBuffer : ValueIO {
    static void put(KXIOBuffer io) {
        KXIOPutL(-7, io);
        KXIOPutF(-2.5f, io);
        for (const char* text : {"two words", static_cast<const char*>(nullptr), ""})
            KXIOPutString(text, io);
        KXIOPutPoint({1.5f, -1.5f}, io);
        KXIOPutColor({0.25f, 0.5f, 2, -1}, io);
    }
    // What was put, read again.
    static std::string get(KXIOBuffer io) {
        std::ostringstream values;
        values << KXIOGetL(io) << ' ' << KXIOGetF(io);
        for (int i = 0; i < 3; ++i) {
            const char* const text = KXIOGetString(io);
            values << " [" << (text ? text : "null") << ']';
        }
        const KXPoint point = KXIOGetPoint(io);
        const KXColor color = KXIOGetColor(io);
        for (const float value : {point.x, point.y, color.r, color.g, color.b, color.a})
            values << ' ' << value;
        return values.str();
    }

    const Stream stream = reading("");
    KXNetworkBuffer buffer;
};

TEST_F(IOBuffer, OneSetOfCallsForFilesAndMessages) {
    const std::string rest = " -2.5 [two words] [null] [] 1.5 -1.5 0.25 0.5 2 -1";
    const KXIOBuffer file = KXIOBufferWith(stream.get(), &buffer), network = KXIOBufferWith(nullptr, &buffer);
    put(file);
    EXPECT_EQ(ftell(stream.get()), 4 + 4 + (4 + 10) + 4 + (4 + 1) + 8 + 16);
    EXPECT_EQ(buffer.bufferLength(), 0);
    rewind(stream.get());
    EXPECT_EQ(get(file), std::to_string(static_cast<long>(4294967289)) + rest)
        << "a file gives the bare 32 bits, the sign is up to the reader";
    put(network);
    EXPECT_EQ(buffer.bufferLength(), 8 + 8 + (8 + 10) + 8 + (8 + 1) + 16 + 32);
    EXPECT_EQ(get(network), "-7" + rest);
    EXPECT_FALSE(buffer.hasMoreData());
}

TEST_F(IOBuffer, TellWhetherAnythingWasLost) {
    const Stream full(fopen("/dev/full", "w"));
    EXPECT_EQ(KXPutL(7, full.get()), 7) << "waits in memory";
    EXPECT_EQ(KXStreamIsIntact(full.get()), 0);

    const std::string bytes = written([](FILE* file) {
        return KXIOPutString("text", {file, 0}), KXStreamIsIntact(file);
    });
    KXNetworkBuffer whole;
    KXIOPutString("text", {&whole, 1});
    for (const bool isCut : {false, true}) {
        const Stream file = reading(bytes.substr(0, bytes.size() - isCut));
        KXNetworkBuffer cut(whole._bytes(), whole.bufferLength() - isCut);
        for (const KXIOBuffer& io : {KXIOBuffer{file.get(), 0}, KXIOBuffer{&cut, 1}}) {
            EXPECT_EQ(KXIOIsIntact(io), -1) << "nothing was read yet";
            EXPECT_STREQ(KXIOGetString(io), "text");
            EXPECT_EQ(KXIOIsIntact(io), isCut ? 0 : -1) << io.kind;
            KXIOGetF(io);
            EXPECT_EQ(KXIOIsIntact(io), 0) << io.kind;
        }
    }
}

TEST_F(IOBuffer, BuffersWithoutATarget) {
    buffer.appendString("12345678", 8);
    const KXIOBuffer nothing = KXIOBufferWith(nullptr, nullptr);
    EXPECT_EQ(nothing.kind, 1);
    for (const KXIOBuffer& io : {nothing, {nullptr, 0}, {&buffer, 2}, {&buffer, -1}, {stream.get(), 2}}) {
        put(io);
        EXPECT_EQ(get(io), "0 0 [null] [null] [null] 0 0 0 0 0 0");
        EXPECT_EQ(KXIOIsIntact(io), 0);
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
