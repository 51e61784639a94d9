#include <Kobaltrix/KXRandom.h>

#include "core/ground/Truncate.h"
#include "util/RandomTrace.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

static _KXRecordedNumbers* recordedNumbers() {
    return _KXTraceOfRandom && _KXTraceOfRandom->instead ? &*_KXTraceOfRandom->instead : nullptr;
}

static int draw() {
    _KXRecordedNumbers* const recorded = recordedNumbers();
    const int number = recorded ? recorded->next() : std::rand();
    _KXNoteRandomNumber(static_cast<std::uint32_t>(number));
    return number;
}

int KXRandomize(int min, int max) {
    if (min > max)
        return 0;
    // One draw is enough for every range but the very widest.
    const std::uint64_t width = static_cast<std::uint64_t>(static_cast<std::int64_t>(max) - min) + 1;
    const int largest = recordedNumbers() ? _KXRecordedNumbers::largest : RAND_MAX;
    const std::uint64_t outcomes = static_cast<std::uint64_t>(largest) + 1;
    std::uint64_t drawn = 0;
    std::uint64_t reach = 1;
    do {
        drawn = drawn * outcomes + static_cast<std::uint64_t>(draw());
        reach *= outcomes;
    } while (reach < width);
    return static_cast<int>(static_cast<std::int64_t>(drawn % width) + min);
}

// Rounds toward zero. A float that stands for a number of four decimals already, as 0.7f does, stays as it
// is, though its exact value may lie a little below; so do all large ones, infinite ones included.
static float toFourDecimals(float value) {
    const double steps = value * 10000.0;
    if (static_cast<float>(std::round(steps) / 10000.0) == value)
        return value;
    return static_cast<float>(std::trunc(steps) / 10000.0);
}

float KXRandomizef(float min, float max) {
    if (!(min <= max)) // also when either is not a number
        return 0;
    const float low = toFourDecimals(min);
    const float high = toFourDecimals(max);

    // A whole number and a fraction are drawn, and the pair says how far along the range the result lies. The
    // numbers that truncate to 0 spread over two units, hence the 20000 fractions. Used directly, the whole
    // number would make the upper bound of 0.0 to 1.0 as likely as everything below it.
    constexpr int fractions = 20000;
    const int firstWhole = _KXTruncate(low);
    const int lastWhole = _KXTruncate(high);
    const double whole = KXRandomize(firstWhole, lastWhole);
    // Of all numbers there are: where rand() has 15 bits, some of 20000 would come up twice as often.
    const int fraction = KXRandomize(0, std::numeric_limits<int>::max()) % fractions;
    const double drawn = (whole - firstWhole) * fractions + fraction;
    const double drawable = (static_cast<double>(lastWhole) - firstWhole + 1) * fractions;

    constexpr double largest = std::numeric_limits<float>::max();
    const double firstStep = std::round(std::clamp<double>(low, -largest, largest) * 10000.0);
    const double lastStep = std::round(std::clamp<double>(high, -largest, largest) * 10000.0);
    const double step = std::floor((lastStep - firstStep + 1) * (drawn / drawable)) + firstStep;
    const double value = std::clamp<double>(step / 10000.0, -largest, largest);
    const float result = std::clamp(static_cast<float>(value), low, high);

    // Rounding a bound toward zero can widen the range: then what was asked for decides.
    if (result < min && min <= high)
        return min;
    return result > max && max >= low ? max : result;
}

int KXRandomPercentChance(int percent) {
    return draw() % 101 > 100 - static_cast<std::int64_t>(percent) ? -1 : 0;
}

KXDirection KXRandomDirection() {
    return static_cast<KXDirection>(KXRandomize(KXDirectionNone, KXDirectionUpRight));
}

KXDirection KXRandomCardinalDirection() {
    constexpr KXDirection drawn[] = {KXDirectionUp, KXDirectionLeft, KXDirectionRight, KXDirectionDown};
    return drawn[KXRandomize(0, 3)];
}
