// The files that the game's sound program makes.

#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXSound.h>

#include <gtest/gtest.h>

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>
#include <vector>

#include <sys/wait.h>

namespace {
std::string pathOf(const char* name) { return std::string(ASSETS "/") + name + ".wav"; }

constexpr const char* effects[] = {"click", "pick", "feed", "hop", "hurt", "bat", "dawn", "dark"};

struct Recording {
    explicit Recording(const char* name) {
        Uint8* bytes = nullptr;
        Uint32 size = 0;
        if (!SDL_LoadWAV(pathOf(name).c_str(), &spec, &bytes, &size)) {
            ADD_FAILURE() << SDL_GetError();
            return;
        }
        const auto* first = reinterpret_cast<const Sint16*>(bytes);
        samples.assign(first, first + size / sizeof(Sint16));
        SDL_FreeWAV(bytes);
    }

    double seconds() const { return static_cast<double>(samples.size()) / spec.freq; }
    /// The samples between two shares of the whole.
    std::span<const Sint16> part(double from, double to) const {
        const auto at = [this](double share) {
            return static_cast<std::size_t>(share * static_cast<double>(samples.size()));
        };
        return std::span(samples).subspan(at(from), at(to) - at(from));
    }

    SDL_AudioSpec spec = {};
    std::vector<Sint16> samples;
};

int peak(std::span<const Sint16> samples) {
    int highest = 0;
    for (const int sample : samples)
        highest = std::max(highest, std::abs(sample));
    return highest;
}

/// The mean loudness in decibels; the loudest square wave has 0.
double loudness(std::span<const Sint16> samples) {
    double sum = 0;
    for (const double sample : samples)
        sum += sample * sample;
    return 10 * std::log10(sum / static_cast<double>(samples.size()) / 32768 / 32768);
}

/// How often the wave rises through zero in a sample.
double crossings(std::span<const Sint16> samples) {
    int count = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        count += samples[i - 1] < 0 && samples[i] >= 0;
    return count / static_cast<double>(samples.size());
}

/// How sharply the wave bends where it does most: a click is a sharp bend.
int sharpestBend(std::span<const Sint16> samples) {
    int sharpest = 0;
    for (std::size_t i = 2; i < samples.size(); ++i)
        sharpest = std::max(sharpest, std::abs(samples[i] - 2 * samples[i - 1] + samples[i - 2]));
    return sharpest;
}

TEST(Sounds, EffectsAreCleanAndEquallyLoud) {
    for (const char* name : effects) {
        SCOPED_TRACE(name);
        const Recording effect(name);
        EXPECT_EQ(effect.spec.freq, 44100);
        EXPECT_EQ(effect.spec.channels, 1);
        EXPECT_EQ(effect.spec.format, AUDIO_S16LSB);
        ASSERT_GT(effect.seconds(), 0.05);
        EXPECT_NEAR(20 * std::log10(peak(effect.samples) / 32768.0), -6, 1.5);
        EXPECT_NEAR(loudness(effect.samples), -17, 3);
        // No click where it begins, and none where it ends: a fifth of a millisecond is near to silence.
        EXPECT_LT(peak(std::span(effect.samples).first(10)), 700);
        EXPECT_LT(peak(std::span(effect.samples).last(10)), 100);
    }
    EXPECT_NEAR(Recording("dawn").seconds(), 3, 0.2);
    EXPECT_NEAR(Recording("dark").seconds(), 2, 0.2);
}

TEST(Sounds, EffectsRiseAndFallAsTheyMean) {
    const struct {
        const char* name;
        double early, late; // as shares of the whole
        double least, most; // how many times higher the late sound is
    } cases[] = {
        {"pick", 0.15, 0.5, 1.45, 1.55}, // a fifth
        {"hop", 0.15, 0.6, 1.2, 3},      {"hurt", 0.15, 0.7, 0.1, 0.7},
        {"dawn", 0.05, 0.65, 1.1, 3},    {"dark", 0.1, 0.65, 0.3, 0.9},
    };
    for (const auto& [name, early, late, least, most] : cases) {
        const Recording effect(name);
        const double ratio = crossings(effect.part(late - 0.05, late + 0.05)) /
                             crossings(effect.part(early - 0.05, early + 0.05));
        EXPECT_GT(ratio, least) << name;
        EXPECT_LT(ratio, most) << name;
    }
}

TEST(Sounds, TheMusicIsCalmAndLoops) {
    const Recording music("music");
    EXPECT_EQ(music.spec.freq, 22050);
    EXPECT_EQ(music.spec.channels, 1);
    EXPECT_EQ(music.spec.format, AUDIO_S16LSB);
    ASSERT_NEAR(music.seconds(), 16 * 8 * 3 / 7.0, 0.001) << "16 bars of 8 steps";
    EXPECT_NEAR(loudness(music.samples), -27, 1.5) << "10 below the effects";
    const int seconds = static_cast<int>(music.seconds());
    for (int second = 0; second < seconds; ++second)
        EXPECT_NEAR(loudness(std::span(music.samples).subspan(second * 22050, 22050)), -27, 4) << second;

    // What sounds at the end goes on at the beginning.
    const auto beginning = std::span(music.samples).first(500), end = std::span(music.samples).last(500);
    std::vector<Sint16> seam(end.begin(), end.end());
    seam.insert(seam.end(), beginning.begin(), beginning.end());
    EXPECT_LT(sharpestBend(seam), 200);
    EXPECT_LT(std::abs(beginning.front()), 300);
    EXPECT_LT(std::abs(end.back()), 300);
}

TEST(Sounds, TheLibraryPlaysThemAll) {
    ASSERT_EQ(KXInit(), -1) << KXError();
    ASSERT_EQ(KXInitAudio(), -1) << KXError();
    {
        for (const char* name : effects)
            EXPECT_TRUE(KXSound(pathOf(name).c_str()).play(0)) << name;
        KXMusic music(pathOf("music").c_str());
        EXPECT_TRUE(music.play(-1)) << KXError();
        EXPECT_TRUE(music.isPlaying());
    }
    KXDeInit();
}

TEST(Sounds, TheProgramSaysWhyItFails) {
    const TemporaryFolder folder;
    const auto run = [&](const std::string& arguments) {
        return WEXITSTATUS(
            std::system(("'" SOUNDS "' " + arguments + " 2>'" + (folder / "log") + "'").c_str()));
    };
    EXPECT_EQ(run(""), 2);
    EXPECT_EQ(run("'" + (folder / "missing") + "'"), 1);
    std::string line;
    std::getline(std::ifstream(folder / "log"), line);
    EXPECT_EQ(line, "kobaltrix_sounds: " + (folder / "missing/click.wav") + ": cannot be written");
}
} // namespace
