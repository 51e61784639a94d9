#include <Kobaltrix/KXMusic.h>

#include "audio/AudioDevice.h"
#include "audio/AudioTest.h"

#include <SDL_mixer.h>

#include <memory>

namespace {
struct Music : AudioTest {
    const std::string song = folder.write("song.ogg", ogg);
};

TEST_F(Music, IsOneStream) {
    KXMusic a(song.c_str()), b(file.c_str());
    for (KXMusic* music : {&a, &b}) {
        EXPECT_FALSE(music->isPlaying());
        music->stop();
        music->pause();
        music->resume();
    }
    EXPECT_TRUE(a.play(-1));
    EXPECT_TRUE(b.isPlaying()) << "the stream is";
    EXPECT_TRUE(b.play(-1));
    a.pause();
    EXPECT_TRUE(b.isPlaying() && Mix_PausedMusic());
    EXPECT_TRUE(a.play(-1));
    EXPECT_FALSE(Mix_PausedMusic()) << "a new piece begins at once";
    b.pause();
    a.resume();
    EXPECT_FALSE(Mix_PausedMusic());
    b.stop();
    EXPECT_FALSE(a.isPlaying());

    auto c = std::make_unique<KXMusic>(song.c_str());
    EXPECT_TRUE(a.play(-1));
    c.reset();
    EXPECT_FALSE(a.isPlaying()) << "whichever piece goes, the stream stops";
    EXPECT_TRUE(a.play(-1));
}

TEST_F(Music, VolumeHasARange) {
    KXMusic music(song.c_str());
    const std::pair<int, int> volumes[] = {{-5, 0}, {0, 0}, {1, 1}, {64, 64}, {128, 128}, {1000, 128}};
    EXPECT_EQ(music.volume(), 128);
    for (const auto& [asked, volume] : volumes) {
        music.setVolume(asked);
        EXPECT_EQ(music.volume(), volume);
    }
    music.setVolume(30);
    EXPECT_TRUE(music.play(0));
    EXPECT_EQ(KXMusic(file.c_str()).volume(), 30);
}

TEST_F(Music, WhatCannotBeLoadedThrows) {
    expectNoneOfTheseLoads<KXMusic>();
    EXPECT_GT(loadDamagedFiles<KXMusic>(), 60);
}

void useWithoutDevice(KXMusic& music) {
    EXPECT_FALSE(music.play(-1));
    EXPECT_STREQ(KXError(), "Unable to play music: Audio device hasn't been opened");
    EXPECT_FALSE(music.isPlaying());
    music.pause();
    music.resume();
    music.stop();
    music.setVolume(5);
    EXPECT_EQ(music.volume(), 5);
}

TEST_F(Music, NeedsAnOpenDeviceAndOutlivesIt) {
    auto playing = std::make_unique<KXMusic>(song.c_str()), idle = std::make_unique<KXMusic>(file.c_str());
    auto twice = std::make_unique<KXMusic>(song.c_str());
    EXPECT_TRUE(playing->play(-1));
    KXDeInit();
    EXPECT_THROW(KXMusic music(song.c_str()), std::bad_alloc);
    for (KXMusic* music : {playing.get(), idle.get(), twice.get()})
        useWithoutDevice(*music);
    playing.reset();
    EXPECT_EQ(KXInit(), -1);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(twice->play(-1));
    std::filesystem::remove(song);
    EXPECT_EQ(KXInitAudio(22050, 0x8010, 1, 512), -1);
    EXPECT_FALSE(twice->isPlaying());
    EXPECT_TRUE(idle->play(-1));
    EXPECT_FALSE(twice->play(-1)) << "its file has gone";
    EXPECT_EQ(std::string(KXError()).rfind("Unable to play music: ", 0), 0u) << KXError();
    EXPECT_FALSE(idle->isPlaying()) << "what played was stopped first";
    EXPECT_TRUE(idle->play(-1));
    twice.reset();
    EXPECT_TRUE(idle->isPlaying()) << "it held no music";
    EXPECT_EQ(KXInitAudio(0, 0, 0, 0), 0);
    useWithoutDevice(*idle);
    KXDeInit();
    idle.reset();
}

TEST(MusicWithoutTheLibrary, Throws) {
    const TemporaryFolder folder;
    const std::string file = folder.write("tone.wav", wavFile(Samples::tone(440, 5000, 100)));
    EXPECT_THROW(KXMusic music(file.c_str()), std::bad_alloc);
    EXPECT_EQ(KXInit(), -1);
    EXPECT_THROW(KXMusic music(file.c_str()), std::bad_alloc) << "a device is opened by KXInitAudio only";
    KXDeInit();
}
} // namespace
