// Computes a tune and writes it as a WAV file, so that the examples need no recordings.
#pragma once

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

/// Writes notes of @a seconds each, one after another, with these frequencies in Hertz, 0 for a rest: 16-bit
/// samples, 22050 a second, one channel. Returns the file's path.
inline std::string writeWave(const std::string& path, const std::vector<double>& tune, double seconds) {
    std::vector<unsigned char> bytes;
    const auto number = [&](unsigned value, int size) { // lowest byte first
        for (int i = 0; i < size; ++i)
            bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
    };
    const auto text = [&](const char* four) { bytes.insert(bytes.end(), four, four + 4); };
    const auto perNote = static_cast<unsigned>(22050 * seconds);
    const unsigned size = static_cast<unsigned>(tune.size()) * perNote * 2;
    text("RIFF"), number(36 + size, 4), text("WAVE");
    text("fmt "), number(16, 4), number(1, 2), number(1, 2);
    number(22050, 4), number(44100, 4), number(2, 2), number(16, 2);
    text("data"), number(size, 4);
    for (const double frequency : tune)
        for (unsigned i = 0; i < perNote; ++i) { // struck, then fading, with one overtone
            const double t = i / 22050.0, turns = 6.283185 * frequency * t;
            const double loudness = std::fmin(1, 80 * t) * std::exp(-4 * t) * (1 - t / seconds);
            const double sample = 11000 * loudness * (std::sin(turns) + 0.3 * std::sin(2 * turns));
            number(static_cast<unsigned>(static_cast<int>(sample)), 2);
        }
    if (FILE* file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
    return path;
}
