#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What a sound file holds.
struct Samples {
    int frequency;
    int channels;
    std::vector<std::int16_t> values; ///< Those of one moment stand together.

    /// The same value all the time, one for each of two channels.
    static Samples constant(std::int16_t left, std::int16_t right, int frames, int frequency = 44100);
    /// A tone, the same on all channels.
    static Samples tone(double hertz, int amplitude, int frames, int frequency = 44100, int channels = 2);
};

std::string wavFile(const Samples& samples);  ///< The bytes of a WAV file, uncompressed, 16 bits a sample.
std::string oggFile(const Samples& samples);  ///< The bytes of an Ogg Vorbis file.
std::string aiffFile(const Samples& samples); ///< The bytes of an AIFF file, 16 bits a sample.
