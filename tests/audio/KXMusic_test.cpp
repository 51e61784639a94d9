#include <Kobaltrix/KXMusic.h>

#include "audio/AudioTest.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXLogicLoop.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {
using Music = AudioTest;

TEST_F(Music, IsOneStream) {
    const std::string song = folder.write("song.ogg", ogg);
    auto lost = std::make_unique<KXMusic>(song.c_str());
    KXMusic music(file.c_str());
    EXPECT_TRUE(music.volume() == 128 && !music.isPlaying());
    EXPECT_TRUE(lost->play(-1) && music.isPlaying()) << "the stream is";
    lost->pause();
    EXPECT_TRUE(music.isPlaying() && Mix_PausedMusic());
    EXPECT_TRUE(music.play(-1) && !Mix_PausedMusic()) << "a new piece begins at once";
    music.stop();
    EXPECT_FALSE(lost->isPlaying());

    EXPECT_EQ(KXInitAudio(0, 0, 0, 0), 0);
    std::filesystem::remove(_KXFilePath(song)); // nobody has it open now
    EXPECT_TRUE(KXInitAudio() && music.play(-1));
    EXPECT_FALSE(lost->play(-1)) << "its file has gone";
    EXPECT_TRUE(std::string(KXError()).starts_with("Unable to play music: ")) << KXError();
    EXPECT_FALSE(music.isPlaying()) << "what played was stopped first";
    EXPECT_TRUE(music.play(-1));
    lost.reset();
    EXPECT_TRUE(music.isPlaying()) << "nothing was loaded of it";
    KXMusic(file.c_str()).setVolume(30);
    EXPECT_FALSE(music.isPlaying()) << "whichever piece goes, the stream stops";
    EXPECT_EQ(music.volume(), 30);
}

TEST_F(Music, FadesSeeksAndTellsItsPlace) {
    constexpr double whole = 1;
    KXMusic music(ogg.data(), ogg.size()), other(file.c_str());
    EXPECT_NEAR(music.length(), whole, 0.001);
    EXPECT_FALSE(music.seek(0)) << "nothing plays";
    EXPECT_TRUE(std::string(KXError()).starts_with("Unable to seek in music: ")) << KXError();
    const auto loudest = [this](std::size_t frames) {
        int most = 0;
        for (const Frame& frame : heard(frames))
            most = std::max(most, std::abs(frame[0]));
        return most;
    };
    KXMusicOptions options;
    options.startSeconds = whole / 2;
    options.fadeInMilliseconds = 1000;
    EXPECT_TRUE(music.start(options));
    EXPECT_NEAR(music.position(), whole / 2, 0.05);
    EXPECT_LT(loudest(2000), 2500);
    while (music.position() >= whole / 2) // it goes round
        heard(1024);
    music.pause();
    EXPECT_TRUE(music.seek(whole / 4));
    EXPECT_NEAR(music.position(), whole / 4, 0.001);
    EXPECT_EQ(loudest(2000), 0);
    for (const double wild : {-1.0, std::numeric_limits<double>::quiet_NaN(), 1e300})
        EXPECT_FALSE(music.seek(wild)) << wild;
    options.startSeconds = 1e9;
    EXPECT_FALSE(music.start(options) || music.isPlaying());

    // One after the other: what comes waits until what goes is silent.
    EXPECT_TRUE(music.start());
    options = KXMusicOptions();
    options.fadeOutMilliseconds = 200;
    EXPECT_TRUE(other.start(options) && other.isPlaying());
    KXLogicUpdate();
    EXPECT_EQ(Mix_FadingMusic(), MIX_FADING_OUT);
    heardUntil([] { return !Mix_PlayingMusic(); });
    EXPECT_TRUE(other.isPlaying() && other.position() == 0);
    KXLogicUpdate();
    EXPECT_TRUE(Mix_PlayingMusic() && Mix_FadingMusic() == MIX_NO_FADING);
    EXPECT_GT(loudest(4000), 7000);
    EXPECT_TRUE(music.start(options));
    music.stop();
    KXLogicUpdate();
    EXPECT_FALSE(music.isPlaying()) << "nobody waits any more";
    other.play(-1);
    other.stop(50);
    heardUntil([&] { return !other.isPlaying(); });
    other.play(-1);
    EXPECT_TRUE(music.start(options));
    KXDeInit();
    KXLogicUpdate();
    EXPECT_FALSE(music.isPlaying());
}

TEST_F(Music, BelongsToAGroup) {
    KXMusic music(file.c_str());
    music.setVolume(100);
    KXSetGroupVolume(KXSoundGroupMusic, 0.5f);
    EXPECT_EQ(music.volume(), 50);
    music.setVolume(40);
    EXPECT_TRUE(music.play(-1) && music.volume() == 20);
    KXPauseGroup(KXSoundGroupMusic);
    music.resume(); // it waits for the group
    EXPECT_TRUE(Mix_PausedMusic() && music.isPlaying());
    EXPECT_TRUE(music.play(-1) && Mix_PausedMusic());
    music.pause();
    KXResumeGroup(KXSoundGroupMusic);
    EXPECT_TRUE(Mix_PausedMusic()) << "halted by itself";
    music.resume();
    EXPECT_FALSE(Mix_PausedMusic());
    KXSetSoundVolume(0);
    KXStopAllSounds();
    EXPECT_TRUE(music.isPlaying() && music.volume() == 20);
    KXStopGroup(KXSoundGroupMusic);
    EXPECT_FALSE(music.isPlaying());
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_EQ(music.volume(), 64) << "128, and half of it";
    KXSetGroupVolume(KXSoundGroupMusic, 1);
}
} // namespace
