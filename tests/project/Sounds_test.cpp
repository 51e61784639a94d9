// The files that the game's sound program makes.

#include "support/Program.h"

#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXSound.h>

#include <gtest/gtest.h>

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <tuple>

namespace {
using Samples = std::span<const Sint16>;

std::string pathOf(const std::string& name) { return ASSETS "/" + name + ".wav"; }

constexpr const char* effects[] = {"click", "pick", "feed", "hop", "hurt", "bat", "dawn", "dark"};

struct Recording {
    Recording(const std::string& name, int frequency) {
        SDL_AudioSpec spec = {};
        Uint32 size = 0;
        Uint8* bytes = nullptr;
        EXPECT_TRUE(SDL_LoadWAV(pathOf(name).c_str(), &spec, &bytes, &size)) << SDL_GetError();
        EXPECT_EQ(std::tuple(spec.freq, spec.channels, spec.format), std::tuple(frequency, 1, AUDIO_S16LSB));
        const auto* first = reinterpret_cast<const Sint16*>(bytes);
        samples.assign(first, first + size / sizeof(Sint16));
        seconds = static_cast<double>(samples.size()) / frequency;
        SDL_FreeWAV(bytes);
    }
    std::vector<Sint16> samples;
    double seconds;
};

int peak(Samples samples) {
    const auto [lowest, highest] = std::ranges::minmax(samples);
    return std::max(-lowest, +highest);
}

/// The mean loudness in decibels; the loudest square wave has 0.
double loudness(Samples samples) {
    double sum = 0;
    for (const double sample : samples)
        sum += sample * sample;
    return 10 * std::log10(sum / static_cast<double>(samples.size()) / 32768 / 32768);
}

/// How often the wave rises through zero in the tenth of the samples around a share of them.
int crossings(Samples samples, double around) {
    const std::size_t part = samples.size() / 10;
    samples = samples.subspan(
        static_cast<std::size_t>(around * static_cast<double>(samples.size())) - part / 2, part);
    int count = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        count += samples[i - 1] < 0 && samples[i] >= 0;
    return count;
}

TEST(Sounds, EffectsAreCleanAndEquallyLoud) {
    for (const char* name : effects) {
        SCOPED_TRACE(name);
        const Recording effect(name, 44100);
        ASSERT_GT(effect.seconds, 0.05);
        EXPECT_NEAR(20 * std::log10(peak(effect.samples) / 32768.0), -6, 1.5);
        EXPECT_NEAR(loudness(effect.samples), -17, 3);
        // No click where it begins, and none where it ends: a fifth of a millisecond is near to silence.
        EXPECT_LT(peak(Samples(effect.samples).first(10)), 700);
        EXPECT_LT(peak(Samples(effect.samples).last(10)), 100);
    }
    EXPECT_NEAR(Recording("dawn", 44100).seconds, 3, 0.2);
    EXPECT_NEAR(Recording("dark", 44100).seconds, 2, 0.2);
}

TEST(Sounds, EffectsRiseAndFallAsTheyMean) {
    // Two moments, as shares of the whole, and how many times higher the later one sounds.
    const std::tuple<const char*, double, double, double, double> cases[] = {
        {"pick", 0.15, 0.5, 1.45, 1.55}, // a fifth
        {"hop", 0.15, 0.6, 1.2, 3},      {"hurt", 0.15, 0.7, 0.1, 0.7},
        {"dawn", 0.05, 0.65, 1.1, 3},    {"dark", 0.1, 0.65, 0.3, 0.9},
    };
    for (const auto& [name, early, late, least, most] : cases) {
        const Recording effect(name, 44100);
        const double ratio = 1.0 * crossings(effect.samples, late) / crossings(effect.samples, early);
        EXPECT_TRUE(least < ratio && ratio < most) << name << ' ' << ratio;
    }
}

TEST(Sounds, TheMusicIsCalmAndLoops) {
    const Recording music("music", 22050);
    const Samples all = music.samples;
    ASSERT_NEAR(music.seconds, 16 * 8 * 3 / 7.0, 0.001) << "16 bars of 8 steps";
    EXPECT_NEAR(loudness(all), -27, 1.5) << "10 below the effects";
    for (std::size_t begin = 0; begin + 22050 <= all.size(); begin += 22050)
        EXPECT_NEAR(loudness(all.subspan(begin, 22050)), -27, 4) << begin;
    // What sounds at the end goes on at the beginning: a click would be a sharp bend of the wave.
    for (std::size_t i = all.size() - 500; i < all.size() + 498; ++i) {
        const auto at = [&](std::size_t index) { return all[index % all.size()]; };
        EXPECT_LT(std::abs(at(i) - 2 * at(i + 1) + at(i + 2)), 200) << i;
    }
    EXPECT_LT(peak(all.first(1)), 300);
    EXPECT_LT(peak(all.last(1)), 300);
}

TEST(Sounds, TheLibraryPlaysThemAll) {
    ASSERT_EQ(KXInit(), -1) << KXError();
    ASSERT_EQ(KXInitAudio(), -1) << KXError();
    for (const char* name : effects)
        EXPECT_TRUE(KXSound(pathOf(name).c_str()).play(0)) << name;
    EXPECT_TRUE(KXMusic(pathOf("music").c_str()).play(-1)) << KXError();
    KXDeInit();
}

TEST(Sounds, TheProgramSaysWhyItFails) {
    const TemporaryFolder folder;
    EXPECT_EQ(runProgram(folder, "'" SOUNDS "'").status, 2);
    const auto [status, output] = runProgram(folder, "'" SOUNDS "' missing");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(output, "kobaltrix_sounds: missing/click.wav: cannot be written\n");
}
} // namespace
