#include "audio/AudioDevice.h"

#include <Kobaltrix/KXCore.h>

#include <gtest/gtest.h>

#include <SDL_mixer.h>

#include <cstdlib>
#include <string>

namespace {
struct AudioDevice : testing::Test {
    AudioDevice() { EXPECT_EQ(KXInit(), -1); }
    ~AudioDevice() override { KXDeInit(); }
};

TEST_F(AudioDevice, OpensWithWhatIsAskedAndReopens) {
    int frequency = 0, channels = 0;
    Uint16 format = 0;
    EXPECT_EQ(KXInitAudio(22050, 0x8010, 1, 512), -1) << KXError();
    EXPECT_EQ(Mix_QuerySpec(&frequency, &format, &channels), 1);
    EXPECT_EQ(channels, 1);
    KXSetMixingChannels(24);
    EXPECT_EQ(Mix_AllocateChannels(-1), 24);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_EQ(Mix_QuerySpec(&frequency, &format, &channels), 1) << "opened once: the first was closed";
    EXPECT_EQ(frequency, 44100);
    EXPECT_EQ(format, 0x8010);
    EXPECT_EQ(channels, 2);
    EXPECT_EQ(Mix_AllocateChannels(-1), 8);
    for (int i = 0; i < 2; ++i) {
        _KXDeInitAudio();
        EXPECT_EQ(_KXAudioInitialized, 0);
        EXPECT_EQ(Mix_QuerySpec(nullptr, nullptr, nullptr), 0);
    }
}

TEST_F(AudioDevice, SaysWhyItCannotBeOpened) {
    const auto expectFailure = [](const char* reason, int frequency, int channels, int chunk) {
        EXPECT_EQ(KXInitAudio(frequency, 0x8010, channels, chunk), 0);
        EXPECT_TRUE(std::string(KXError()).starts_with(reason)) << KXError();
        EXPECT_EQ(_KXAudioInitialized, 0);
    };
    const int cases[][3] = {{-1, 2, 1024},       {1, 2, 1024},  {44100, 0, 1024},
                            {44100, 1000, 1024}, {44100, 2, 0}, {44100, 2, 1 << 20}};
    for (const auto& [frequency, channels, chunk] : cases)
        expectFailure("Unable to initialize audio: ", frequency, channels, chunk);
    const std::string driver = getenv("SDL_AUDIODRIVER");
    setenv("SDL_AUDIODRIVER", "no such driver", 1);
    expectFailure("Couldn't initialize SDL: ", 44100, 2, 1024);
    setenv("SDL_AUDIODRIVER", driver.c_str(), 1);
    EXPECT_EQ(KXInitAudio(), -1) << KXError();
}
} // namespace
