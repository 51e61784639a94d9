#include "audio/KXSound.h"

#include "audio/AudioDevice.h"
#include "audio/AudioTest.h"

#include <SDL_mixer.h>

#include <memory>

namespace {
struct Sound : AudioTest {};

int channelsPlaying() { return Mix_Playing(-1); }

TEST_F(Sound, StartsWithoutAChannel) {
    KXSound sound(file.c_str());
    sound.stop();
    sound.setPanning(0, 0);
    sound.setDistance(255);
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_EQ(sound.volume(), 0);
    sound.setVolume(64);
    EXPECT_EQ(sound.volume(), 0) << "kept for the first play";
    EXPECT_TRUE(sound.play(-1));
    EXPECT_TRUE(sound.isPlaying());
    EXPECT_EQ(sound.volume(), 64);
    sound.stop();
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_EQ(sound.volume(), 0);
    EXPECT_TRUE(sound.play(-1));
    EXPECT_EQ(sound.volume(), 64);
}

TEST_F(Sound, TheMasterVolumeScales) {
    KXSound a(file.c_str()), b(file.c_str());
    b.setVolume(32);
    EXPECT_TRUE(a.play(-1) && b.play(-1));
    KXSetSoundVolume(64);
    EXPECT_EQ(a.volume(), 64);
    EXPECT_EQ(b.volume(), 64) << "every channel takes the master's value";
    b.setVolume(32);
    EXPECT_EQ(b.volume(), 16);
    EXPECT_TRUE(a.play(-1));
    EXPECT_EQ(a.volume(), 64);
    EXPECT_TRUE(b.play(-1));
    EXPECT_EQ(b.volume(), 16);
    KXSetSoundVolume(1000);
    EXPECT_EQ(_KXMasterVolume, 128);
    KXSetSoundVolume(-1000);
    EXPECT_EQ(_KXMasterVolume, 0);
    EXPECT_EQ(a.volume(), 0);
}

TEST_F(Sound, TakesFreeChannelsAndOwnsNone) {
    KXSetMixingChannels(2);
    KXSound a(file.c_str()), b(file.c_str());
    EXPECT_TRUE(a.play(-1));
    EXPECT_TRUE(a.play(-1)) << "a second copy";
    EXPECT_EQ(channelsPlaying(), 2);
    EXPECT_FALSE(b.play(-1)) << "none is free";
    EXPECT_FALSE(b.isPlaying());
    EXPECT_STREQ(KXError(), "");
    a.stop(); // only the copy that it remembers
    EXPECT_EQ(channelsPlaying(), 1);
    EXPECT_FALSE(a.isPlaying());
    EXPECT_TRUE(b.play(-1));
    EXPECT_FALSE(a.play(-1));
    EXPECT_EQ(channelsPlaying(), 2);
    KXStopAllSounds();
    EXPECT_EQ(channelsPlaying(), 0);

    // Stopped from outside, b still remembers its channel, which is now the other sound's.
    KXSetMixingChannels(1);
    EXPECT_TRUE(b.play(-1));
    KXStopAllSounds();
    EXPECT_FALSE(b.isPlaying());
    a.setVolume(10);
    EXPECT_TRUE(a.play(-1));
    EXPECT_TRUE(b.isPlaying());
    EXPECT_EQ(b.volume(), 10);
    b.setVolume(20);
    EXPECT_EQ(a.volume(), 20);
    b.stop();
    EXPECT_FALSE(a.isPlaying());

    KXSetMixingChannels(0);
    EXPECT_FALSE(a.play(-1));
    KXSetSoundVolume(64);
    KXStopAllSounds();
    KXSetMixingChannels(1 << 30);
    EXPECT_EQ(Mix_AllocateChannels(-1), 65536);
    EXPECT_TRUE(a.play(-1));
    EXPECT_EQ(a.volume(), 5);
}

TEST_F(Sound, AChannelThatIsGoneIsSafe) {
    KXSound a(file.c_str()), b(file.c_str());
    EXPECT_TRUE(a.play(-1) && b.play(-1));
    KXSetMixingChannels(1);
    EXPECT_EQ(channelsPlaying(), 1);
    EXPECT_FALSE(b.isPlaying());
    EXPECT_EQ(b.volume(), 0);
    b.setVolume(7);
    b.setPanning(1, 2);
    b.setDistance(3);
    b.stop();
    EXPECT_TRUE(a.isPlaying());
}

TEST_F(Sound, DestroyingSilencesEveryCopy) {
    KXSound other(file.c_str());
    EXPECT_TRUE(other.play(-1));
    auto sound = std::make_unique<KXSound>(file.c_str());
    EXPECT_TRUE(sound->play(-1) && sound->play(-1) && sound->play(5));
    EXPECT_EQ(channelsPlaying(), 4);
    sound.reset();
    EXPECT_EQ(channelsPlaying(), 1);
    EXPECT_TRUE(other.isPlaying());
}

TEST_F(Sound, WhatCannotBeLoadedThrows) {
    expectNoneOfTheseLoads<KXSound>();
    EXPECT_GT(loadDamagedFiles<KXSound>(), 60);
    KXSound silent(folder.write("silent.wav", wavFile({44100, 2, {}})).c_str());
    EXPECT_FALSE(silent.play(0)) << "there is nothing to play";
}

// Everything that could reach for channels, none of which are there.
void useWithoutDevice(KXSound& sound) {
    EXPECT_FALSE(sound.play(-1));
    EXPECT_FALSE(sound.isPlaying());
    sound.setVolume(50);
    EXPECT_EQ(sound.volume(), 0);
    sound.setPanning(1, 2);
    sound.setDistance(3);
    sound.stop();
    KXSetMixingChannels(3);
    KXSetSoundVolume(100);
    KXStopAllSounds();
}

TEST_F(Sound, NeedsAnOpenDeviceAndOutlivesIt) {
    auto playing = std::make_unique<KXSound>(file.c_str()), idle = std::make_unique<KXSound>(file.c_str());
    auto twice = std::make_unique<KXSound>(file.c_str()), lost = std::make_unique<KXSound>(file.c_str());
    EXPECT_TRUE(playing->play(-1) && twice->play(-1) && lost->play(-1));
    KXDeInit();
    EXPECT_THROW(KXSound sound(file.c_str()), std::bad_alloc);
    for (KXSound* sound : {playing.get(), idle.get(), twice.get(), lost.get()})
        useWithoutDevice(*sound);
    playing.reset();
    EXPECT_EQ(KXInit(), -1);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(twice->play(-1));
    EXPECT_EQ(twice->volume(), 39) << "50 of 100";
    EXPECT_FALSE(lost->isPlaying()) << "another's channel, one device later";
    lost->stop();
    EXPECT_TRUE(twice->isPlaying());
    std::filesystem::remove(file);
    EXPECT_EQ(KXInitAudio(22050, 0x8010, 1, 512), -1);
    EXPECT_FALSE(twice->play(-1)) << "its file has gone";
    EXPECT_EQ(KXInitAudio(0, 0, 0, 0), 0);
    useWithoutDevice(*twice);
    folder.write("tone.wav", wav);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(twice->play(-1) && lost->play(-1) && idle->play(-1)) << "and is back";
    EXPECT_EQ(channelsPlaying(), 3);
    lost.reset();
    Mix_CloseAudio(); // behind the library's back
    useWithoutDevice(*idle);
    twice.reset();
    _KXDeInitAudio();
    EXPECT_EQ(Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 512), 0); // by the game itself
    KXSound own(file.c_str());
    EXPECT_TRUE(own.play(-1));
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(own.play(-1) && idle->play(-1));
    EXPECT_EQ(channelsPlaying(), 2);
    Mix_CloseAudio();
}

TEST(SoundWithoutTheLibrary, Throws) {
    const TemporaryFolder folder;
    const std::string file = folder.write("tone.wav", wavFile(Samples::tone(440, 5000, 100)));
    EXPECT_THROW(KXSound sound(file.c_str()), std::bad_alloc);
    EXPECT_EQ(KXInit(), -1);
    EXPECT_THROW(KXSound sound(file.c_str()), std::bad_alloc) << "a device is opened by KXInitAudio only";
    KXSetSoundVolume(64); // before there is a device
    EXPECT_EQ(KXInitAudio(), -1);
    KXSound sound(file.c_str());
    EXPECT_TRUE(sound.play(-1));
    EXPECT_EQ(sound.volume(), 64);
    KXSetSoundVolume(128);
    KXDeInit();
}
} // namespace
