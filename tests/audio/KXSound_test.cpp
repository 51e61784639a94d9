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
