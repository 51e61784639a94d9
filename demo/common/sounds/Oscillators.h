#pragma once

#include <array>
#include <cstdint>
#include <span>

/// A number that moves from one value to another while a sound lasts, by equal ratios, as pitch is heard.
struct Glide {
    double from, to;

    Glide(double fixed) : from(fixed), to(fixed) {}
    Glide(double first, double last) : from(first), to(last) {}
    double at(double share) const;
};

/// The loudness of a tone's first harmonics. So few of them stay below what the sample rate can hold.
using Timbre = std::array<double, 6>;
namespace Timbres {
constexpr Timbre sine = {1};
constexpr Timbre flute = {1, 0.25, 0.12, 0.03};
constexpr Timbre pluck = {1, 0.5, 0.25, 0.12, 0.06};
constexpr Timbre pad = {1, 0.3, 0.2, 0.08};
constexpr Timbre bass = {1, 0.6, 0.3, 0.12, 0.05};
constexpr Timbre brass = {0.8, 1, 0.7, 0.5, 0.3, 0.15};
constexpr Timbre hollow = {1, 0, 0.33, 0, 0.2};
} // namespace Timbres

/// A tone with its harmonics.
struct Tone {
    Glide hertz;
    Timbre timbre = Timbres::sine;
    double vibrato = 0;     ///< How far the pitch swings to either side, in semitones.
    double vibratoRate = 5; ///< Swings a second.
};

/// Noise around a frequency.
struct Noise {
    Glide hertz;
    double width = 1; ///< 0.1 nearly whistles, 2 is broad.
};

/// Random numbers that are the same in every build.
class Random {
public:
    double between(double low, double high);

private:
    std::uint32_t _state = 0x6b6f6261;
};

/// Fills the samples with the plain sound, as loud at its end as at its start.
void oscillate(const Tone& tone, double rate, std::span<float> samples);
void oscillate(const Noise& noise, double rate, std::span<float> samples);
