#include <Kobaltrix/KXIO.h>

#include "core/ground/Endianness.h"
#include "core/ground/Truncate.h"
#include "platform/FileBytes.h"

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

// How far byte number @a index is shifted within a stored number.
static int shiftOfByte(int index) { return 8 * (_KXEndianness ? index : 3 - index); }

// Four single bytes through the calls that take no lock: there is one thread, and a save file is made of
// thousands of these.
static bool putWord(std::uint32_t word, FILE* file) {
    if (!file)
        return false;
    for (int i = 0; i < 4; ++i) {
        const int byte = static_cast<int>(word >> shiftOfByte(i) & 0xFF);
        if (_KXPutByte(byte, file) != byte)
            return false;
    }
    return true;
}

static bool getWord(std::uint32_t& word, FILE* file) {
    word = 0;
    if (!file)
        return false;
    for (int i = 0; i < 4; ++i) {
        const int byte = _KXGetByte(file);
        if (byte == EOF)
            return false;
        word |= static_cast<std::uint32_t>(byte) << shiftOfByte(i);
    }
    return true;
}

// Too large a value becomes the largest float that a long holds: the largest long would read as a failure, as
// its low 32 bits are those of -1.
static long truncateToLong(float value) {
    constexpr float tooLarge = -static_cast<float>(std::numeric_limits<long>::min());
    if (std::isnan(value))
        return 0;
    if (value >= tooLarge)
        return static_cast<long>(std::nextafter(tooLarge, 0.0f));
    if (value < -tooLarge)
        return std::numeric_limits<long>::min();
    return static_cast<long>(value);
}

// Whether a writer's result reads as a failure; that of writing a real -1 does so, too.
static bool tellsFailure(long result) { return static_cast<std::int32_t>(result) == -1; }

static bool isSound(FILE* file) { return file && !ferror(file); }

static float getExtent(FILE* file) { return static_cast<float>(static_cast<std::int32_t>(KXGetL(file))); }

long KXPutL(long value, FILE* file) { return putWord(static_cast<std::uint32_t>(value), file) ? value : -1; }

long KXGetL(FILE* file) {
    std::uint32_t word;
    return getWord(word, file) ? static_cast<long>(word) : -1;
}

long KXPutF(float value, FILE* file) {
    return putWord(std::bit_cast<std::uint32_t>(value), file) ? truncateToLong(value) : -1;
}

float KXGetF(FILE* file) {
    std::uint32_t word;
    return getWord(word, file) ? std::bit_cast<float>(word) : 0.0f;
}

bool KXPutPoint(KXPoint point, FILE* file) {
    const long x = KXPutF(point.x, file);
    const long y = KXPutF(point.y, file);
    return !tellsFailure(x) && !tellsFailure(y);
}

KXPoint KXGetPoint(FILE* file) {
    const float x = KXGetF(file);
    return {x, KXGetF(file)};
}

bool KXPutSize(KXSize size, FILE* file) {
    const long width = KXPutL(_KXTruncate(size.width), file);
    const long height = KXPutL(_KXTruncate(size.height), file);
    return !tellsFailure(width) && !tellsFailure(height);
}

KXSize KXGetSize(FILE* file) {
    const float width = getExtent(file);
    return {width, getExtent(file)};
}

bool KXPutRect(KXRect rect, FILE* file) {
    KXPutPoint(rect.origin, file);
    KXPutSize(rect.size, file);
    return true;
}

KXRect KXGetRect(FILE* file) {
    const KXPoint origin = KXGetPoint(file);
    return {origin, KXGetSize(file)};
}

bool KXPutColor(KXColor color, FILE* file) {
    for (const float channel : {color.r, color.g, color.b, color.a})
        KXPutF(channel, file);
    return isSound(file);
}

KXColor KXGetColor(FILE* file) {
    const float r = KXGetF(file);
    const float g = KXGetF(file);
    const float b = KXGetF(file);
    return {r, g, b, KXGetF(file)};
}

bool KXPutString(const char* string, FILE* file) {
    const std::size_t bytes = string ? std::strlen(string) + 1 : 0;
    if (!file || bytes > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        return false;
    KXPutL(static_cast<long>(bytes), file);
    if (bytes > 0)
        fwrite(string, 1, bytes, file);
    return isSound(file);
}

char* KXGetString(FILE* file) {
    const auto length = static_cast<std::int32_t>(KXGetL(file));
    if (length < 1)
        return nullptr;
    // A temporary string keeps 1023 bytes, so that many are kept here and the rest is only read past:
    // whatever length a damaged file claims, it costs no memory.
    char text[1024] = {};
    char passedOver[4096];
    std::size_t left = static_cast<std::size_t>(length);
    const std::size_t kept = std::min(left, sizeof text - 1);
    bool more = fread(text, 1, kept, file) == kept;
    for (left -= kept; more && left > 0;) {
        const std::size_t block = std::min(left, sizeof passedOver);
        more = fread(passedOver, 1, block, file) == block;
        left -= block;
    }
    return isSound(file) ? KXTempString("%s", text) : nullptr;
}

int KXStreamIsIntact(FILE* file) { return isSound(file) && !feof(file) && _KXFlush(file) == 0 ? -1 : 0; }
