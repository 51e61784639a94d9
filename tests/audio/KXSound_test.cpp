#include "audio/KXSound.h"

#include "audio/AudioDevice.h"
#include "audio/AudioTest.h"

#include <memory>

namespace {
struct Sound : AudioTest {
    static int channelsPlaying() { return Mix_Playing(-1); }

    KXSound a{file.c_str()}, b{file.c_str()};
};

TEST_F(Sound, TakesFreeChannelsAndOwnsNone) {
    KXSetMixingChannels(2);
    EXPECT_TRUE(a.play(-1) && a.play(-1)) << "a second copy";
    EXPECT_EQ(channelsPlaying(), 2);
    EXPECT_FALSE(b.play(-1) || b.isPlaying()) << "none is free";
    EXPECT_STREQ(KXError(), "");
    a.stop(); // only the copy that it remembers
    EXPECT_TRUE(channelsPlaying() == 1 && !a.isPlaying());

    // Stopped from outside, b still remembers its channel, which is now the other sound's.
    KXSetMixingChannels(1);
    KXStopAllSounds();
    EXPECT_EQ(channelsPlaying(), 0);
    EXPECT_TRUE(b.play(-1));
    KXStopAllSounds();
    EXPECT_FALSE(b.isPlaying());
    a.setVolume(10);
    EXPECT_TRUE(a.play(-1) && b.isPlaying());
    EXPECT_EQ(b.volume(), 10);
    b.setVolume(20);
    EXPECT_EQ(a.volume(), 20);
    b.stop();
    EXPECT_FALSE(a.isPlaying());
}

TEST_F(Sound, SmallFilesThatDecodeToMuchAreRefused) {
    // At 1000 samples a second each byte becomes 44, and a sound is held twice while it is made.
    std::string slow = std::string(wav, 0, 44).replace(24, 2, "\xE8\x03") + std::string(2 << 20, '\0');
    slow.replace(40, 4, std::string("\0\0\x20\0", 4));
    const std::string path = folder.write("slow.wav", slow);
    const auto error = [&path] {
        try {
            KXSound sound(path.c_str());
        } catch (const std::bad_alloc&) {
            return std::string(KXError());
        }
        return std::string();
    };
    EXPECT_EQ(error(), "") << "92 million bytes are little enough";
    for (const unsigned most : {1U << 20, 92000000U}) { // not decoded at all, and thrown away
        KXSetMaximumSoundBytes(most);
        EXPECT_EQ(error(), path + ": takes more than " + std::to_string(most) + " bytes when it is decoded");
        EXPECT_TRUE(a.play(0)) << "what is loaded stays";
    }
    KXSetMaximumSoundBytes(128 << 20);
}

TEST_F(Sound, ChannelsComeAndGo) {
    EXPECT_TRUE(a.play(-1) && b.play(-1));
    KXSetMixingChannels(1); // b's is gone
    EXPECT_EQ(channelsPlaying(), 1);
    EXPECT_FALSE(b.isPlaying() || b.volume());
    b.setVolume(7);
    b.setPanning(1, 2);
    b.setDistance(3);
    b.stop();
    EXPECT_TRUE(a.isPlaying());
    KXSetMixingChannels(0);
    EXPECT_FALSE(a.play(-1));
    for (const int count : {1 << 30, -5}) {
        KXSetMixingChannels(count);
        EXPECT_EQ(Mix_AllocateChannels(-1), 65536);
    }
}

TEST_F(Sound, DestroyingSilencesEveryCopyAndTheChannelItRemembers) {
    {
        KXSound sound(file.c_str());
        EXPECT_TRUE(sound.play(5) && sound.play(-1) && a.play(-1));
        Mix_HaltChannel(1);
        EXPECT_TRUE(b.play(-1)) << "there";
    }
    EXPECT_TRUE(channelsPlaying() == 1 && a.isPlaying());
}

TEST_F(Sound, ForgetsItsChannelWithTheDevice) {
    EXPECT_TRUE(a.play(-1) && b.play(-1));
    a.setVolume(50);
    EXPECT_EQ(KXInitAudio(), -1);
    KXSetSoundVolume(100);
    EXPECT_TRUE(b.play(-1)) << "on the channel that was a's, one device later";
    EXPECT_FALSE(a.isPlaying());
    a.stop();
    EXPECT_TRUE(b.isPlaying());
    EXPECT_TRUE(a.play(-1));
    EXPECT_EQ(a.volume(), 39) << "50 of 100";
    Mix_CloseAudio(); // behind the library's back
    EXPECT_FALSE(a.isPlaying() || a.play(-1));
    a.stop();
    _KXDeInitAudio();
    EXPECT_EQ(Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 512), 0); // by the game itself
    KXSound own(file.c_str());
    EXPECT_TRUE(own.play(-1));
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(own.play(-1) && a.play(-1));
    EXPECT_EQ(channelsPlaying(), 2);
    Mix_CloseAudio();
}
} // namespace
