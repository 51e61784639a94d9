#include "Track.h"

#include "WavFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

std::size_t Track::samplesIn(double seconds) const {
    return static_cast<std::size_t>(std::lround(seconds * _rate));
}

template<class Source>
void Track::mix(const Source& source, const Envelope& envelope, double start, double length,
                double loudness) {
    std::vector<float> sound(samplesIn(length + envelope.release) + 1);
    oscillate(source, _rate, sound);
    const std::size_t first = samplesIn(start);
    _samples.resize(std::max(_samples.size(), first + sound.size()));
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double level = loudness * envelope.at(static_cast<double>(i) / _rate, length);
        _samples[first + i] += static_cast<float>(sound[i] * level);
    }
}

void Track::add(const Tone& tone, const Envelope& envelope, double start, double length, double loudness) {
    mix(tone, envelope, start, length, loudness);
}

void Track::add(const Noise& noise, const Envelope& envelope, double start, double length, double loudness) {
    mix(noise, envelope, start, length, loudness);
}

void Track::echo(double delay, double factor, int times) {
    const std::vector<float> dry = _samples;
    const std::size_t distance = samplesIn(delay);
    _samples.resize(dry.size() + distance * static_cast<std::size_t>(times));
    double loudness = 1;
    for (int time = 1; time <= times; ++time) {
        loudness *= factor;
        const std::size_t first = distance * static_cast<std::size_t>(time);
        for (std::size_t i = 0; i < dry.size(); ++i)
            _samples[first + i] += static_cast<float>(dry[i] * loudness);
    }
}

void Track::loop(double length) {
    const std::size_t size = samplesIn(length);
    for (std::size_t i = size; i < _samples.size(); ++i)
        _samples[i % size] += _samples[i];
    _samples.resize(size);
    // It starts where the wave crosses zero, so that nothing clicks when it is switched on.
    const auto crossing =
        std::ranges::adjacent_find(_samples, [](float before, float now) { return before < 0 && now >= 0; });
    if (crossing != _samples.end())
        std::rotate(_samples.begin(), crossing + 1, _samples.end());
}

bool Track::save(const std::string& path, double peak) const {
    float loudest = 0;
    for (const float sample : _samples)
        loudest = std::max(loudest, std::abs(sample));
    const double scale = loudest > 0 ? peak * 32767 / loudest : 0;
    std::vector<std::int16_t> values;
    values.reserve(_samples.size());
    for (const float sample : _samples)
        values.push_back(static_cast<std::int16_t>(std::lround(sample * scale)));
    return saveWav(path, _rate, values);
}
