#include "Oscillators.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using std::numbers::pi;

double Glide::at(double share) const { return from * std::pow(to / from, share); }

double Random::between(double low, double high) {
    _state ^= _state << 13;
    _state ^= _state >> 17;
    _state ^= _state << 5;
    return low + (high - low) * _state / 4294967296.0;
}

static double share(std::size_t index, std::size_t size) {
    return static_cast<double>(index) / static_cast<double>(size);
}

void oscillate(const Tone& tone, double rate, std::span<float> samples) {
    double turns = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        // The harmonics are shifted apart: a wave that peaks with all of them at once is less loud for its
        // height.
        double value = 0, harmonic = 1;
        for (const double loudness : tone.timbre) {
            if (loudness > 0)
                value += loudness * std::sin(2 * pi * harmonic * turns + harmonic * harmonic);
            ++harmonic;
        }
        samples[i] = static_cast<float>(value);

        const double seconds = static_cast<double>(i) / rate;
        // A player lets a note settle before it swings.
        const double swing = tone.vibrato * std::min(seconds * 2, 1.0);
        const double bend = swing * std::sin(2 * pi * tone.vibratoRate * seconds);
        turns += tone.hertz.at(share(i, samples.size())) * std::exp2(bend / 12) / rate;
    }
}

// A band-pass filter with two integrators that stays stable while its frequency moves.
void oscillate(const Noise& noise, double rate, std::span<float> samples) {
    Random random;
    double first = 0, second = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double hertz = std::min(noise.hertz.at(share(i, samples.size())), rate * 0.45);
        const double g = std::tan(pi * hertz / rate);
        const double band = (first + g * (random.between(-1, 1) - second)) / (1 + g * (g + noise.width));
        const double low = second + g * band;
        first = 2 * band - first;
        second = 2 * low - second;
        samples[i] = static_cast<float>(band * noise.width);
    }
}
