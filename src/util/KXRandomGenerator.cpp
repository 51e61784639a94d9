#include <Kobaltrix/KXRandomGenerator.h>

#include "util/RandomTrace.h"

#include <Kobaltrix/KXRandom.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

std::uint64_t KXRandomSeed() {
    std::uint64_t seed = 0;
    for (int part = 0; part < 4; ++part) // rand() need not give more than 15 bits
        seed = seed << 16 ^ static_cast<std::uint64_t>(KXRandomize(0, 0xFFFF));
    return seed;
}

KXRandomGenerator::KXRandomGenerator(std::uint64_t seed) { this->seed(seed); }

// The formula and the constants are those of splitmix64.
static std::uint64_t splitMix(std::uint64_t& at) {
    std::uint64_t mixed = at += 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBU;
    return mixed ^ mixed >> 31;
}

static KXRandomState stateOfSeed(std::uint64_t seed) {
    const std::uint64_t low = splitMix(seed);
    const std::uint64_t high = splitMix(seed); // another number than the first, so never are all four 0
    const auto upper = [](std::uint64_t bits) { return static_cast<std::uint32_t>(bits >> 32); };
    return {static_cast<std::uint32_t>(low), upper(low), static_cast<std::uint32_t>(high), upper(high)};
}

void KXRandomGenerator::seed(std::uint64_t seed) { setState(stateOfSeed(seed)); }

KXRandomState KXRandomGenerator::state() const { return _state; }

void KXRandomGenerator::setState(const KXRandomState& state) {
    _state = state;
    if (_KXTraceOfRandom && _KXTraceOfRandom->begins)
        _KXTraceOfRandom->begins(_state);
    if (!(_state.a | _state.b | _state.c | _state.d)) // it would give zeros for ever
        _state = stateOfSeed(0);
}

std::uint32_t KXRandomGenerator::number() {
    auto& [a, b, c, d] = _state;
    const std::uint32_t result = std::rotl(a + d, 7) + a;
    const std::uint32_t shifted = b << 9;
    c ^= a;
    d ^= b;
    b ^= c;
    a ^= d;
    c ^= shifted;
    d = std::rotl(d, 11);
    _KXNoteRandomNumber(result);
    return result;
}

int KXRandomGenerator::range(int lowest, int highest) {
    const auto [low, high] = std::minmax<std::int64_t>({lowest, highest});
    // The upper half of a number times the width is the result. Some results have one number more than
    // others: it is known by the lower half, and drawn again. The division is seldom needed.
    const std::uint64_t width = static_cast<std::uint64_t>(high - low) + 1;
    std::uint64_t product = 0;
    std::uint64_t lower = 0;
    do {
        product = number() * width;
        lower = product & 0xFFFFFFFFU;
    } while (lower < width && lower < (std::uint64_t{1} << 32) % width);
    return static_cast<int>(static_cast<std::int64_t>(product >> 32) + low);
}

int KXRandomGenerator::index(int count) { return count > 0 ? range(0, count - 1) : -1; }

// 24 bits are what a float holds.
static std::uint32_t upper24(std::uint32_t number) { return number >> 8; }
static constexpr double steps = 1 << 24;

float KXRandomGenerator::fraction() { return static_cast<float>(upper24(number()) / steps); }

float KXRandomGenerator::range(float lowest, float highest) {
    const double step = upper24(number());
    if (std::isnan(lowest) || std::isnan(highest))
        return 0;
    constexpr double largest = std::numeric_limits<float>::max();
    const double first = std::clamp<double>(lowest, -largest, largest);
    const double last = std::clamp<double>(highest, -largest, largest);
    // Both products are exact in a double, and so only the sum is rounded: the result lies within the bounds,
    // and is the same whether or not a processor multiplies and adds in one go.
    return static_cast<float>((first * (steps - step) + last * step) / steps);
}

int KXRandomGenerator::chance(float probability) {
    constexpr double outcomes = 4294967296.0;
    return number() < probability * outcomes ? -1 : 0;
}

KXPoint KXRandomGenerator::pointIn(const KXRect& area) {
    const KXPoint from = area.origin;
    const float x = range(from.x, from.x + area.size.width);
    return {x, range(from.y, from.y + area.size.height)};
}
