// What is really played: the samples that the mixer gives to the device are measured.

#include "audio/AudioTest.h"

#include <Kobaltrix/KXMusic.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <tuple>

namespace {
constexpr int length = 3000; ///< Frames of each file.

struct AudioOutput : AudioTest {
    /// A file of the same value all the time, one for each side.
    std::string level(std::int16_t left, std::int16_t right) const {
        std::string content = wav.substr(0, wav.size() - length * sizeof(Frame));
        const Frame frame = {left, right};
        for (int i = 0; i < length; ++i)
            content.append(reinterpret_cast<const char*>(frame.data()), sizeof frame);
        return folder.write(std::to_string(left), content);
    }

    /// Expects the loudest value on each side.
    void expectPeaks(int left, int right, int tolerance = 2, const std::vector<Frame>& frames = {}) {
        std::array<int, 2> peak = {};
        for (const Frame& frame : frames.empty() ? heard(1024) : frames)
            for (const std::size_t side : {0u, 1u})
                peak[side] = std::max(peak[side], std::abs(frame[side]));
        EXPECT_NEAR(peak[0], left, tolerance);
        EXPECT_NEAR(peak[1], right, tolerance);
    }

    /// Expects the tone on both sides, rising through zero so often in a thousand frames.
    void expectTone(int loudness, double rises) {
        const std::vector<Frame> frames = heard(4000);
        expectPeaks(loudness, loudness, loudness / 20, frames);
        int count = 0;
        for (std::size_t i = 1; i < frames.size(); ++i)
            count += frames[i - 1][0] < 0 && frames[i][0] >= 0;
        EXPECT_NEAR(1000.0 * count / static_cast<double>(frames.size()), rises, rises / 20);
    }

    /// Expects that a file of one level is heard so often.
    void expectTimes(auto& playable, int loops, int times) {
        const std::vector<Frame> all = heardUntil([&, begun = false]() mutable {
            begun = begun || playable.play(loops);
            return !playable.isPlaying();
        });
        EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const Frame& frame) { return frame != Frame{}; }),
                  times * length)
            << loops;
    }
};

TEST_F(AudioOutput, VolumePanningAndDistance) {
    KXSound sound(level(8000, -4000).c_str());
    expectPeaks(0, 0);
    // The sound's volume, the master's, panning to both sides, the distance; then the channel's volume, and
    // what is heard on both sides.
    const int cases[][8] = {
        {128, 128, 255, 255, 0, 128, 8000, 4000},
        {64, 128, 255, 255, 0, 64, 4000, 2000},
        {64, 64, 255, 255, 0, 32, 2000, 1000},
        {100, 99, 255, 255, 0, 77, 4812, 2406}, // 77.3 loses its fraction
        {500, 500, 255, 255, 0, 128, 8000, 4000},
        {-5, 128, 255, 255, 0, 0, 0, 0},
        {128, -1, 255, 255, 0, 0, 0, 0},
        {128, 128, 300, 255, 0, 128, 1380, 4000}, // 300 is 44 in 8 bits
        {64, 128, 0, -1, 0, 64, 0, 2000},         // and -1 is 255
        {64, 128, 255, 0, 256 + 128, 64, 1992, 0},
    };
    for (const auto& [volume, master, panLeft, panRight, distance, channelVolume, left, right] : cases) {
        SCOPED_TRACE(testing::Message() << volume << " of " << master << ", " << left << ", " << right);
        KXSetSoundVolume(master);
        EXPECT_TRUE(sound.play(-1));
        sound.setVolume(volume);
        sound.setPanning(panLeft, panRight);
        sound.setDistance(distance);
        EXPECT_EQ(sound.volume(), channelVolume);
        expectPeaks(left, right, 10);
        KXSetSoundVolume(96);
        EXPECT_EQ(sound.volume(), 96) << "every channel takes the master's value";
        sound.stop();
        EXPECT_EQ(sound.volume(), 0);
        expectPeaks(0, 0);
    }
    KXSetSoundVolume(128);
    EXPECT_TRUE(sound.play(-1)) << "panning and distance ended with the playing, the volume did not";
    expectPeaks(4000, 2000, 10);
}

TEST_F(AudioOutput, MusicUnderSounds) {
    KXMusic music(level(1000, 3000).c_str());
    KXSound sound(level(500, 500).c_str());
    const std::tuple<std::function<void()>, int, int> acts[] = {
        {[&] { music.play(-1); }, 1000, 3000},
        {[&] { sound.play(-1); }, 1500, 3500},
        {[] { KXSetSoundVolume(0); }, 1000, 3000}, // not the music's business
        {[] { KXSetSoundVolume(128); }, 1500, 3500},
        {[&] { music.setVolume(64); }, 1000, 2000},
        {[&] { music.pause(); }, 500, 500},
        {[] { KXStopAllSounds(); }, 0, 0},
        {[&] { music.resume(); }, 500, 1500},
        {[&] { music.setVolume(-5); }, 0, 0},
        {[&] { music.setVolume(1000); }, 1000, 3000},
        {[] { KXStopAllSounds(); }, 1000, 3000},
        {[&] { music.stop(); }, 0, 0},
    };
    for (const auto& row : acts) {
        SCOPED_TRACE(&row - acts);
        std::get<0>(row)();
        expectPeaks(std::get<1>(row), std::get<2>(row));
    }
}

TEST_F(AudioOutput, PlaysAsOftenAsAsked) {
    const std::string path = level(1000, 1000);
    KXSound sound(path.c_str());
    KXMusic music(path.c_str());
    for (const int loops : {0, 1, 3}) {
        expectTimes(sound, loops, loops + 1);
        expectTimes(music, loops, std::max(loops, 1));
    }
    EXPECT_TRUE(sound.play(-7) && music.play(-7)) << "below -1 is for ever too";
    expectPeaks(2000, 2000);
}

TEST_F(AudioOutput, FilesOfEveryKindSoundTheSameOnEveryDevice) {
    for (const char* name : {"44.wav", "22_mono.wav", "44_mono.aiff", "44.ogg", "48_mono.ogg"}) {
        SCOPED_TRACE(name);
        const std::string path = SOUND_FILES "/" + std::string(name);
        KXSound sound(path.c_str());
        KXMusic music(path.c_str());
        sound.setVolume(64);
        for (const int frequency : {44100, 22050}) {
            EXPECT_EQ(KXInitAudio(frequency, 0x8010, 2, 1024), -1) << KXError();
            EXPECT_FALSE(sound.isPlaying() || music.isPlaying());
            expectPeaks(0, 0);
            EXPECT_TRUE(sound.play(-1));
            expectTone(4000, 441000.0 / frequency);
            sound.stop();
            EXPECT_TRUE(music.play(-1));
            expectTone(8000, 441000.0 / frequency);
            EXPECT_TRUE(sound.play(-1));
        }
    }
}
} // namespace
