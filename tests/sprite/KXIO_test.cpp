#include <Kobaltrix/KXIO.h>

#include "core/ground/Endianness.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <gtest/gtest.h>

#include <sys/types.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace {
using namespace std::string_literals;

struct CloseStream {
    void operator()(FILE* file) const { fclose(file); }
};
using Stream = std::unique_ptr<FILE, CloseStream>;

// A stream that holds these bytes, to be read.
Stream reading(const std::string& bytes) {
    Stream stream(tmpfile());
    fwrite(bytes.data(), 1, bytes.size(), stream.get());
    rewind(stream.get());
    return stream;
}

// What an operation puts on a stream.
std::string written(const std::function<void(FILE*)>& put) {
    Stream stream(tmpfile());
    put(stream.get());
    std::string bytes(static_cast<std::size_t>(ftell(stream.get())), 0);
    rewind(stream.get());
    EXPECT_EQ(fread(bytes.data(), 1, bytes.size(), stream.get()), bytes.size());
    return bytes;
}

// A device that refuses its byte number `bad` once and takes all others, so that a test sees both what is
// given up and what is still tried.
struct FaultyDevice {
    explicit FaultyDevice(int badByte) : bad(badByte) {
        const cookie_io_functions_t functions = {nullptr, put, nullptr, nullptr};
        stream.reset(fopencookie(this, "w", functions));
        setvbuf(stream.get(), nullptr, _IONBF, 0);
    }
    static ssize_t put(void* cookie, const char*, std::size_t size) {
        auto& device = *static_cast<FaultyDevice*>(cookie);
        const int wanted = static_cast<int>(size);
        const bool refuses = device.bad >= device.offered && device.bad < device.offered + wanted;
        const int accepted = refuses ? device.bad - device.offered : wanted;
        device.offered += refuses ? accepted + 1 : accepted;
        device.taken += accepted;
        return accepted;
    }
    int bad, offered = 0, taken = 0;
    Stream stream;
};

struct ValueIO : testing::Test {
    ~ValueIO() override { _KXCleanTempStrings(); }
};

int asInt(long value) { return static_cast<int>(value); }

TEST_F(ValueIO, NumbersAreLittleEndian) {
    const struct {
        long value;
        std::string bytes;
        long read;
    } longs[] = {{-1, "\xff\xff\xff\xff", 4294967295},
                 {0, "\0\0\0\0"s, 0},
                 {0x1122334455, "\x55\x44\x33\x22", 0x22334455},
                 {-2147483648L, "\0\0\0\x80"s, 2147483648L},
                 {LONG_MIN, "\0\0\0\0"s, 0},
                 {LONG_MAX, "\xff\xff\xff\xff", 4294967295}};
    for (const auto& one : longs) {
        EXPECT_EQ(written([&](FILE* file) { EXPECT_EQ(KXPutL(one.value, file), one.value); }), one.bytes);
        EXPECT_EQ(KXGetL(reading(one.bytes).get()), one.read);
    }
    EXPECT_EQ(asInt(KXGetL(reading("\xfe\xff\xff\xff").get())), -2);

    const float infinity = std::numeric_limits<float>::infinity();
    const struct {
        float value;
        long result;
        std::string bytes;
    } floats[] = {{1.0f, 1, "\0\0\x80\x3f"s},
                  {-1.5f, -1, "\0\0\xc0\xbf"s},
                  {-0.0f, 0, "\0\0\0\x80"s},
                  {3e9f, 3000000000, "\x5e\xd0\x32\x4f"},
                  {-infinity, LONG_MIN, "\0\0\x80\xff"s},
                  // The largest long would read as the failure -1 in its low 32 bits.
                  {infinity, 9223371487098961920, "\0\0\x80\x7f"s},
                  {1e30f, 9223371487098961920, "\xca\xf2\x49\x71"},
                  {-0x1p62f, -0x4000000000000000, "\0\0\x80\xde"s},
                  {-0x1p63f, LONG_MIN, "\0\0\0\xdf"s},
                  {NAN, 0, "\0\0\xc0\x7f"s}};
    for (const auto& one : floats) {
        EXPECT_EQ(written([&](FILE* file) { EXPECT_EQ(KXPutF(one.value, file), one.result); }), one.bytes)
            << one.value;
        const float read = KXGetF(reading(one.bytes).get());
        EXPECT_TRUE(read == one.value || (std::isnan(read) && std::isnan(one.value)));
        EXPECT_EQ(std::signbit(read), std::signbit(one.value));
    }
    _KXEndianness = 0;
    EXPECT_EQ(written([](FILE* file) { KXPutL(0x01020304, file); }), "\1\2\3\4");
    EXPECT_EQ(KXGetL(reading("\1\2\3\4").get()), 0x01020304);
    _KXEndianness = -1;
}

TEST_F(ValueIO, StructuresComeBackAsStored) {
    const std::string rectBytes = written([](FILE* file) {
        EXPECT_TRUE(KXPutRect({{1.5f, 2.25f}, {10.9f, 4.1f}}, file));
    });
    EXPECT_EQ(rectBytes, "\0\0\xc0\x3f\0\0\x10\x40\x0a\0\0\0\x04\0\0\0"s);
    const KXRect rect = KXGetRect(reading(rectBytes).get());
    EXPECT_EQ(rect.origin.x, 1.5f);
    EXPECT_EQ(rect.origin.y, 2.25f);
    EXPECT_EQ(rect.size.width, 10);
    EXPECT_EQ(rect.size.height, 4);

    const std::string colorBytes = written([](FILE* file) {
        EXPECT_TRUE(KXPutColor({0.25f, -1, 2, 0.5f}, file));
    });
    EXPECT_EQ(colorBytes, "\0\0\x80\x3e\0\0\x80\xbf\0\0\0\x40\0\0\0\x3f"s);
    const KXColor color = KXGetColor(reading(colorBytes).get());
    EXPECT_EQ(color.r, 0.25f);
    EXPECT_EQ(color.g, -1.0f);
    EXPECT_EQ(color.b, 2.0f);
    EXPECT_EQ(color.a, 0.5f);

    const struct {
        float value;
        int stored;
        bool pointResult, sizeResult; // -1 reads as a failure although it is written
    } values[] = {{0, 0, true, true},           {7.9f, 7, true, true},         {-0.9f, 0, true, true},
                  {-1, -1, false, false},       {-1.5f, -1, false, false},     {-2, -2, true, true},
                  {1e30f, INT_MAX, true, true}, {-1e30f, INT_MIN, true, true}, {3e9f, INT_MAX, true, true},
                  {NAN, 0, true, true}};
    for (const auto& one : values) {
        SCOPED_TRACE(one.value);
        for (const bool first : {true, false}) {
            const float x = first ? one.value : 0, y = first ? 0 : one.value;
            const std::string point = written([&](FILE* file) {
                EXPECT_EQ(KXPutPoint({x, y}, file), one.pointResult);
            });
            const KXPoint pointRead = KXGetPoint(reading(point).get());
            EXPECT_TRUE(std::isnan(x) ? std::isnan(pointRead.x) : pointRead.x == x);
            EXPECT_TRUE(std::isnan(y) ? std::isnan(pointRead.y) : pointRead.y == y);
            const std::string size = written([&](FILE* file) {
                EXPECT_EQ(KXPutSize({x, y}, file), one.sizeResult);
            });
            const KXSize sizeRead = KXGetSize(reading(size).get());
            EXPECT_EQ(sizeRead.width, static_cast<float>(first ? one.stored : 0));
            EXPECT_EQ(sizeRead.height, static_cast<float>(first ? 0 : one.stored));
            EXPECT_EQ(size.size(), 8u);
        }
        const std::string rectangle = written([&](FILE* file) {
            EXPECT_TRUE(KXPutRect({{one.value, one.value}, {one.value, one.value}}, file));
        });
        EXPECT_EQ(KXGetRect(reading(rectangle).get()).size.height, static_cast<float>(one.stored));
        EXPECT_EQ(rectangle.size(), 16u);
    }
}

TEST_F(ValueIO, Strings) {
    const struct {
        const char* text;
        std::string bytes;
    } texts[] = {{"", "\1\0\0\0\0"s},
                 {"hero %s%n%%", "\x0c\0\0\0hero %s%n%%\0"s},
                 {"\u00e9 \U0001F3AE", "\x08\0\0\0\xc3\xa9 \xf0\x9f\x8e\xae\0"s},
                 {nullptr, "\0\0\0\0"s}};
    for (const auto& one : texts) {
        EXPECT_EQ(written([&](FILE* file) { EXPECT_TRUE(KXPutString(one.text, file)); }), one.bytes);
        EXPECT_STREQ(KXGetString(reading(one.bytes).get()), one.text);
    }
    const struct {
        std::string stored;
        const char* text;
        long next; // where reading goes on
    } damaged[] = {
        {"\0\0\0\0rest"s, nullptr, 4},
        {"\xff\xff\xff\xffrest", nullptr, 4},
        {"\0\0\0\x80rest"s, nullptr, 4},
        {"\4\0\0\0ab\0d"s + "rest", "ab", 8},   // a terminator before the end
        {"\4\0\0\0abcd"s + "rest", "abcd", 8},  // none at all
        {"\x64\0\0\0short"s, "short", 9},       // a length that the file cannot hold
        {"\xff\xff\xff\x7fshort"s, "short", 9}, // the largest there is
        {"\xff\xff\xff\x7f"s, "", 4},           //
        {"\5\0\0"s, nullptr, 3},                // cut in the length
    };
    for (const auto& one : damaged) {
        const Stream stream = reading(one.stored);
        EXPECT_STREQ(KXGetString(stream.get()), one.text);
        EXPECT_EQ(ftell(stream.get()), one.next);
    }
    // All of a long text is stored and read past, but a temporary string holds 1023 bytes.
    for (const std::size_t length : {1022u, 1023u, 1024u, 1025u, 5119u, 5120u, 5121u, 100'000u}) {
        const std::string text(length, 't');
        const Stream stream(tmpfile());
        EXPECT_TRUE(KXPutString(text.c_str(), stream.get()));
        KXPutL(77, stream.get());
        rewind(stream.get());
        EXPECT_EQ(std::string(KXGetString(stream.get())), text.substr(0, 1023));
        EXPECT_EQ(KXGetL(stream.get()), 77);
    }
}

TEST_F(ValueIO, StreamsCutAtEveryByte) {
    const std::string bytes = written([](FILE* file) {
        KXPutL(-2, file);
        KXPutF(1.5f, file);
        KXPutRect({{3.5f, 4.5f}, {5, 6}}, file);
        KXPutColor({0.25f, 0.5f, 0.75f, 1}, file);
        KXPutString("name", file);
    });
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        const Stream stream = reading(bytes.substr(0, cut));
        const auto whole = [cut](std::size_t end, auto value, auto failure) {
            return cut >= end ? value : failure;
        };
        EXPECT_EQ(KXGetL(stream.get()), whole(4, 4294967294, -1));
        EXPECT_EQ(KXGetF(stream.get()), whole(8, 1.5f, 0.0f));
        const KXRect rect = KXGetRect(stream.get());
        EXPECT_EQ(rect.origin.x, whole(12, 3.5f, 0.0f));
        EXPECT_EQ(rect.origin.y, whole(16, 4.5f, 0.0f));
        EXPECT_EQ(rect.size.width, whole(20, 5.0f, -1.0f));
        EXPECT_EQ(rect.size.height, whole(24, 6.0f, -1.0f));
        const KXColor color = KXGetColor(stream.get());
        EXPECT_EQ(color.r, whole(28, 0.25f, 0.0f));
        EXPECT_EQ(color.a, whole(40, 1.0f, 0.0f));
        const char* text = KXGetString(stream.get());
        if (cut < 44)
            EXPECT_EQ(text, nullptr);
        else
            EXPECT_EQ(std::string(text), std::string("name").substr(0, cut - 44));
    }
}

TEST_F(ValueIO, DevicesThatRefuseAByte) {
    // Each number gives up at its first refused byte; the numbers after it are still tried.
    const struct {
        const char* name;
        int bytes;
        std::function<bool(FILE*)> put; // true for success
        bool tellsFailure;
    } operations[] = {
        {"long", 4, [](FILE* file) { return KXPutL(0x01020304, file) == 0x01020304; }, true},
        {"float", 4, [](FILE* file) { return KXPutF(2.5f, file) == 2; }, true},
        {"point", 8,
         [](FILE* file) {
             return KXPutPoint({2, 3}, file);
         },
         true},
        {"size", 8,
         [](FILE* file) {
             return KXPutSize({2, 3}, file);
         },
         true},
        {"rect", 16,
         [](FILE* file) {
             return KXPutRect({{2, 3}, {4, 5}}, file);
         },
         false},
        {"color", 16,
         [](FILE* file) {
             return KXPutColor({2, 3, 4, 5}, file);
         },
         true},
    };
    for (const auto& operation : operations)
        for (int bad = 0; bad <= operation.bytes; ++bad) {
            SCOPED_TRACE(testing::Message() << operation.name << ", byte " << bad);
            FaultyDevice device(bad);
            const bool failed = bad < operation.bytes;
            EXPECT_EQ(operation.put(device.stream.get()), !failed || !operation.tellsFailure);
            EXPECT_EQ(device.taken, operation.bytes - (failed ? 4 - bad % 4 : 0));
            EXPECT_EQ(ferror(device.stream.get()) != 0, failed);
        }
    for (int bad = 0; bad <= 9; ++bad) {
        FaultyDevice device(bad);
        EXPECT_EQ(KXPutString("text", device.stream.get()), bad == 9);
        EXPECT_EQ(device.taken, bad < 4 ? bad + 5 : bad);
    }
}

TEST_F(ValueIO, FullDevicesAndStreamsOfTheWrongKind) {
    const Stream full(fopen("/dev/full", "w"));
    ASSERT_NE(full, nullptr);
    setvbuf(full.get(), nullptr, _IONBF, 0);
    TemporaryFolder folder;
    const Stream readOnly(fopen(folder.write("file", std::string(64, 1)).c_str(), "r"));
    for (FILE* file : {full.get(), readOnly.get(), static_cast<FILE*>(nullptr)}) {
        EXPECT_EQ(KXPutL(7, file), -1);
        EXPECT_EQ(KXPutF(7, file), -1);
        EXPECT_FALSE(KXPutPoint({1, 2}, file));
        EXPECT_FALSE(KXPutSize({1, 2}, file));
        EXPECT_TRUE(KXPutRect({{1, 2}, {3, 4}}, file));
        EXPECT_FALSE(KXPutColor({1, 2, 3, 4}, file));
        EXPECT_FALSE(KXPutString("text", file));
        EXPECT_FALSE(KXPutString(nullptr, file));
    }
    // With the error flag up a text is refused even if its bytes are there.
    EXPECT_EQ(KXGetString(readOnly.get()), nullptr);
    for (FILE* file : {full.get(), static_cast<FILE*>(nullptr)}) {
        EXPECT_EQ(KXGetL(file), -1);
        EXPECT_EQ(KXGetF(file), 0.0f);
        EXPECT_EQ(KXGetPoint(file).y, 0.0f);
        EXPECT_EQ(KXGetSize(file).height, -1.0f);
        EXPECT_EQ(KXGetRect(file).size.width, -1.0f);
        EXPECT_EQ(KXGetColor(file).a, 0.0f);
        EXPECT_EQ(KXGetString(file), nullptr);
    }
}
} // namespace
