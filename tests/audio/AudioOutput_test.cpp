// What is really played: the platform's disk driver writes it to a file, and the samples in it are measured.

#include "audio/AudioDevice.h"
#include "audio/SoundFiles.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXSound.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <thread>

namespace {
using Frame = std::array<int, 2>;

constexpr std::size_t bytesPerFrame = 4, chunkFrames = 1024;

struct AudioOutput : testing::Test {
    AudioOutput() {
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", recording.c_str(), 1);
        setenv("SDL_DISKAUDIODELAY", "1", 1); // milliseconds a chunk: some twenty times as fast as a speaker
        EXPECT_EQ(KXInit(), -1) << KXError();
        EXPECT_EQ(KXInitAudio(), -1) << KXError();
    }
    ~AudioOutput() override {
        KXDeInit();
        KXSetSoundVolume(128);
        setenv("SDL_AUDIODRIVER", before.c_str(), 1);
    }

    std::string file(const std::string& name, const std::string& content) const {
        return folder.write(name, content);
    }

    /// Lets the other thread mix on until something holds; a test that waits in vain fails.
    template<class Condition>
    static void waitUntil(Condition holds) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!holds() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
        EXPECT_TRUE(holds()) << "the mixer stands still";
    }

    std::size_t written() const {
        std::error_code none;
        const auto size = std::filesystem::file_size(recording, none);
        return none ? 0 : static_cast<std::size_t>(size);
    }

    std::vector<Frame> frames(std::size_t begin) const {
        std::ifstream in(recording, std::ios::binary);
        in.seekg(static_cast<std::streamoff>(begin));
        std::vector<Frame> all;
        for (std::array<std::int16_t, 2> frame;
             in.read(reinterpret_cast<char*>(frame.data()), bytesPerFrame);)
            all.push_back({frame[0], frame[1]});
        return all;
    }

    /// Some frames that were mixed after this was called.
    std::vector<Frame> heardNow() const {
        // What is being mixed, and what waits in the buffer of the file, may still be from before.
        const std::size_t begin = (written() / bytesPerFrame + 4 * chunkFrames) * bytesPerFrame;
        waitUntil([&] { return written() >= begin + 4 * chunkFrames * bytesPerFrame; });
        std::vector<Frame> heard = frames(begin);
        heard.resize(std::min(heard.size(), 4 * chunkFrames));
        return heard;
    }

    /// All that was heard since the device was opened. Closes it.
    std::vector<Frame> heardAtAll() const {
        _KXDeInitAudio();
        return frames(0);
    }

    TemporaryFolder folder;
    const std::string recording = folder / "recording.raw";
    const std::string before = getenv("SDL_AUDIODRIVER");
};

/// The loudest value on each side.
Frame peak(const std::vector<Frame>& frames) {
    Frame loudest = {};
    for (const Frame& frame : frames)
        for (const std::size_t side : {0u, 1u})
            loudest[side] = std::max(loudest[side], std::abs(frame[side]));
    return loudest;
}

/// Whether the loudest value on each side is as loud as it ought to be.
testing::AssertionResult peaksAt(const std::vector<Frame>& frames, int left, int right, int tolerance) {
    const Frame heard = peak(frames);
    const bool good = std::abs(heard[0] - left) <= tolerance && std::abs(heard[1] - right) <= tolerance;
    return (good ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "heard " << heard[0] << ", " << heard[1];
}

std::size_t audible(const std::vector<Frame>& frames) {
    return static_cast<std::size_t>(
        std::count_if(frames.begin(), frames.end(), [](const Frame& frame) { return frame != Frame{}; }));
}

/// How often the left side rises through zero in a thousand frames.
double risesPerThousand(const std::vector<Frame>& frames) {
    int rises = 0;
    for (std::size_t i = 1; i < frames.size(); ++i)
        rises += frames[i - 1][0] < 0 && frames[i][0] >= 0;
    return 1000.0 * rises / static_cast<double>(frames.size());
}

TEST_F(AudioOutput, VolumePanningAndDistance) {
    KXSound sound(file("level.wav", wavFile(Samples::constant(8000, -4000, 5000))).c_str());
    EXPECT_TRUE(peaksAt(heardNow(), 0, 0, 0));
    const struct {
        int volume, master, panLeft, panRight, distance, channelVolume, left, right;
    } cases[] = {
        {128, 128, 255, 255, 0, 128, 8000, 4000},
        {64, 128, 255, 255, 0, 64, 4000, 2000},
        {128, 64, 255, 255, 0, 64, 4000, 2000},
        {64, 64, 255, 255, 0, 32, 2000, 1000},
        {100, 99, 255, 255, 0, 77, 4812, 2406}, // 77.3 loses its fraction
        {1, 127, 255, 255, 0, 0, 0, 0},
        {128, 0, 255, 255, 0, 0, 0, 0},
        {500, 500, 255, 255, 0, 128, 8000, 4000},
        {-5, 128, 255, 255, 0, 0, 0, 0},
        {128, -1, 255, 255, 0, 0, 0, 0},
        {128, 128, 255, 0, 0, 128, 8000, 0},
        {128, 128, 0, 255, 0, 128, 0, 4000},
        {128, 128, 300, 255, 0, 128, 1380, 4000}, // 300 is 44 in 8 bits
        {64, 128, 0, -1, 0, 64, 0, 2000},         // and -1 is 255
        {128, 128, 255, 255, 128, 128, 3984, 1992},
        {64, 128, 0, 255, 256 + 128, 64, 0, 996},
    };
    for (const auto& [volume, master, panLeft, panRight, distance, channelVolume, left, right] : cases) {
        SCOPED_TRACE(testing::Message() << "volume " << volume << " of " << master << ", panning " << panLeft
                                        << ", " << panRight << ", distance " << distance);
        KXSetSoundVolume(master);
        EXPECT_TRUE(sound.play(-1));
        sound.setVolume(volume);
        sound.setPanning(panLeft, panRight);
        sound.setDistance(distance);
        EXPECT_EQ(sound.volume(), channelVolume);
        EXPECT_TRUE(peaksAt(heardNow(), left, right, 10));
        KXSetSoundVolume(128); // every channel, whatever the sound's own volume
        if (distance == 0 && panLeft + panRight == 510) {
            EXPECT_TRUE(peaksAt(heardNow(), 8000, 4000, 10));
        }
        sound.stop();
        EXPECT_TRUE(peaksAt(heardNow(), 0, 0, 0));
    }
    EXPECT_TRUE(sound.play(-1)) << "panning and distance ended with the playing, the volume did not";
    EXPECT_TRUE(peaksAt(heardNow(), 4000, 2000, 10));
}

TEST_F(AudioOutput, MusicUnderSounds) {
    KXMusic music(file("level.wav", wavFile(Samples::constant(1000, 3000, 3000))).c_str());
    KXSound sound(file("more.wav", wavFile(Samples::constant(500, 500, 3000))).c_str());
    EXPECT_TRUE(music.play(-1));
    EXPECT_TRUE(peaksAt(heardNow(), 1000, 3000, 2));
    sound.play(-1);
    EXPECT_TRUE(peaksAt(heardNow(), 1500, 3500, 2));
    KXSetSoundVolume(0);
    EXPECT_TRUE(peaksAt(heardNow(), 1000, 3000, 2)) << "not the music's business";
    KXSetSoundVolume(128);
    music.setVolume(64);
    EXPECT_TRUE(peaksAt(heardNow(), 1000, 2000, 2));
    music.pause();
    EXPECT_TRUE(peaksAt(heardNow(), 500, 500, 2));
    EXPECT_TRUE(music.isPlaying());
    KXStopAllSounds();
    EXPECT_TRUE(peaksAt(heardNow(), 0, 0, 0));
    music.resume();
    EXPECT_TRUE(peaksAt(heardNow(), 500, 1500, 2));
    music.setVolume(-5);
    EXPECT_TRUE(peaksAt(heardNow(), 0, 0, 0));
    music.setVolume(1000);
    EXPECT_TRUE(peaksAt(heardNow(), 1000, 3000, 2));
    KXStopAllSounds();
    EXPECT_TRUE(peaksAt(heardNow(), 1000, 3000, 2));
    music.stop();
    EXPECT_TRUE(peaksAt(heardNow(), 0, 0, 0));
}

TEST_F(AudioOutput, PlaysAsOftenAsAsked) {
    constexpr std::size_t length = 3000;
    const std::string path = file("level.wav", wavFile(Samples::constant(1000, 1000, length)));
    const std::pair<int, std::size_t> soundLoops[] = {{0, 1}, {1, 2}, {3, 4}},
                                      musicLoops[] = {{0, 1}, {1, 1}, {2, 2}, {5, 5}};
    KXSound sound(path.c_str());
    KXMusic music(path.c_str());
    for (const auto& [loops, times] : soundLoops) {
        EXPECT_EQ(KXInitAudio(), -1);
        EXPECT_TRUE(sound.play(loops));
        waitUntil([&] { return !sound.isPlaying(); });
        EXPECT_EQ(audible(heardAtAll()), times * length) << loops;
    }
    for (const auto& [loops, times] : musicLoops) {
        EXPECT_EQ(KXInitAudio(), -1);
        EXPECT_TRUE(music.play(loops));
        waitUntil([&] { return !music.isPlaying(); });
        EXPECT_EQ(audible(heardAtAll()), times * length) << loops;
    }
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(sound.play(-7)) << "below -1 is for ever too";
    EXPECT_TRUE(music.play(-7));
    EXPECT_TRUE(peaksAt(heardNow(), 2000, 2000, 2));
}

TEST_F(AudioOutput, FilesOfEveryKindSoundTheSame) {
    // 441 Hz: ten times in a thousand frames of the device, and a thousand are heard in each chunk.
    const std::string files[] = {file("44.wav", wavFile(Samples::tone(441, 8000, 44100))),
                                 file("22 mono.wav", wavFile(Samples::tone(441, 8000, 22050, 22050, 1))),
                                 file("44 mono.aiff", aiffFile(Samples::tone(441, 8000, 44100, 44100, 1))),
                                 file("44.ogg", oggFile(Samples::tone(441, 8000, 44100))),
                                 file("48 mono.ogg", oggFile(Samples::tone(441, 8000, 48000, 48000, 1)))};
    for (const std::string& path : files) {
        SCOPED_TRACE(path);
        KXSound sound(path.c_str());
        EXPECT_TRUE(sound.play(-1));
        std::vector<Frame> heard = heardNow();
        EXPECT_TRUE(peaksAt(heard, 8000, 8000, 400));
        EXPECT_NEAR(risesPerThousand(heard), 10, 0.5);
        sound.stop();
        KXMusic music(path.c_str());
        EXPECT_TRUE(music.play(-1));
        heard = heardNow();
        EXPECT_TRUE(peaksAt(heard, 8000, 8000, 400));
        EXPECT_NEAR(risesPerThousand(heard), 10, 0.5);
    }
}

TEST_F(AudioOutput, SoundsFitTheDeviceThatIsOpenedAgain) {
    KXSound sound(file("tone.wav", wavFile(Samples::tone(441, 8000, 44100))).c_str());
    KXMusic music(file("tone.ogg", oggFile(Samples::tone(882, 8000, 44100))).c_str());
    sound.setVolume(64);
    EXPECT_TRUE(sound.play(-1));
    EXPECT_TRUE(music.play(-1));
    EXPECT_EQ(KXInitAudio(22050, 0x8010, 2, 1024), -1) << KXError();
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_FALSE(music.isPlaying());
    EXPECT_TRUE(peaksAt(heardNow(), 0, 0, 0));
    EXPECT_TRUE(sound.play(-1));
    std::vector<Frame> heard = heardNow();
    EXPECT_TRUE(peaksAt(heard, 4000, 4000, 200));
    EXPECT_NEAR(risesPerThousand(heard), 20, 1) << "half as many frames, the same tone";
    sound.stop();
    EXPECT_TRUE(music.play(-1));
    heard = heardNow();
    EXPECT_TRUE(peaksAt(heard, 8000, 8000, 400));
    EXPECT_NEAR(risesPerThousand(heard), 40, 2);
}
} // namespace
