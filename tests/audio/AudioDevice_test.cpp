#include "audio/AudioDevice.h"

#include "audio/AudioTest.h"
#include "support/System.h"

namespace {
using AudioDevice = AudioTest;

/// How often the mixer is open, with which frequency, format and sides, and its channels.
std::array<int, 5> mixer() {
    int frequency = 0, sides = 0;
    Uint16 format = 0;
    const int times = Mix_QuerySpec(&frequency, &format, &sides);
    return {times, frequency, format, sides, Mix_AllocateChannels(-1)};
}

TEST_F(AudioDevice, OpensWithWhatIsAskedAndReopens) {
    EXPECT_EQ(mixer(), (std::array{1, 44100, 0x8010, 2, 8}));
    EXPECT_EQ(KXInitAudio(22050, 0x8010, 1, 512), -1) << KXError();
    KXSetMixingChannels(24);
    EXPECT_EQ(mixer(), (std::array{1, 22050, 0x8010, 1, 24})) << "opened once: the first was closed";
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_EQ(mixer(), (std::array{1, 44100, 0x8010, 2, 8}));
    for (int i = 0; i < 2; ++i) {
        _KXDeInitAudio();
        EXPECT_TRUE(_KXAudioInitialized == 0 && mixer()[0] == 0);
    }
}

TEST_F(AudioDevice, SaysWhyItCannotBeOpened) {
    const auto expectFailure = [](const std::string& reason, int frequency, int sides, int chunk) {
        EXPECT_TRUE(KXInitAudio(frequency, 0x8010, sides, chunk) == 0 && _KXAudioInitialized == 0);
        EXPECT_TRUE(std::string(KXError()).starts_with(reason)) << KXError();
    };
    const int cases[][3] = {{-1, 2, 1024},       {1, 2, 1024},  {44100, 0, 1024},
                            {44100, 1000, 1024}, {44100, 2, 0}, {44100, 2, 1 << 20}};
    for (const auto& [frequency, sides, chunk] : cases)
        expectFailure("Unable to initialize audio: ", frequency, sides, chunk);
    const std::string driver = getenv("SDL_AUDIODRIVER");
    setVariable("SDL_AUDIODRIVER", "no such driver");
    expectFailure("Couldn't initialize SDL: ", 44100, 2, 1024);
    setVariable("SDL_AUDIODRIVER", driver);
    EXPECT_EQ(KXInitAudio(), -1) << KXError();
}
} // namespace
