#pragma once

#include "Envelope.h"
#include "Oscillators.h"

#include <string>
#include <vector>

/// Where sounds are mixed: one channel that grows with what is added.
class Track {
public:
    explicit Track(int rate) : _rate(rate) {}

    /// Adds a sound. @param start in seconds. @param length in seconds, without the envelope's release.
    void add(const Tone& tone, const Envelope& envelope, double start, double length, double loudness);
    void add(const Noise& noise, const Envelope& envelope, double start, double length, double loudness);
    /// Repeats all there is some times, each one quieter by a factor.
    void echo(double delay, double factor, int times);
    /// Makes a loop: what sounds longer is heard at the beginning.
    void loop(double length);
    /// Writes a WAV file whose loudest sample is this loud, 0 to 1. False if that fails.
    bool save(const std::string& path, double peak) const;

private:
    template<class Source>
    void mix(const Source& source, const Envelope& envelope, double start, double length, double loudness);
    std::size_t samplesIn(double seconds) const;

    int _rate;
    std::vector<float> _samples;
};
