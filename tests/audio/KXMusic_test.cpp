#include <Kobaltrix/KXMusic.h>

#include "audio/AudioTest.h"

namespace {
using Music = AudioTest;

TEST_F(Music, IsOneStream) {
    const std::string song = folder.write("song.ogg", ogg);
    KXMusic a(song.c_str()), b(file.c_str());
    EXPECT_EQ(a.volume(), 128);
    EXPECT_FALSE(a.isPlaying());
    EXPECT_TRUE(a.play(-1));
    EXPECT_TRUE(b.isPlaying()) << "the stream is";
    a.pause();
    EXPECT_TRUE(b.isPlaying() && Mix_PausedMusic());
    EXPECT_TRUE(b.play(-1));
    EXPECT_FALSE(Mix_PausedMusic()) << "a new piece begins at once";
    b.stop();
    EXPECT_FALSE(a.isPlaying());

    std::filesystem::remove(song);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(b.play(-1));
    EXPECT_FALSE(a.play(-1)) << "its file has gone";
    EXPECT_TRUE(std::string(KXError()).starts_with("Unable to play music: ")) << KXError();
    EXPECT_FALSE(b.isPlaying()) << "what played was stopped first";
    EXPECT_TRUE(b.play(-1));
    KXMusic(file.c_str()).setVolume(30);
    EXPECT_FALSE(b.isPlaying()) << "whichever piece goes, the stream stops";
    EXPECT_EQ(b.volume(), 30);
}

TEST_F(Music, ThatCouldNotBeLoadedAgainStopsNothing) {
    KXMusic music(file.c_str());
    {
        const std::string song = folder.write("song.ogg", ogg);
        const KXMusic lost(song.c_str());
        std::filesystem::remove(song);
        EXPECT_EQ(KXInitAudio(), -1);
        EXPECT_TRUE(music.play(-1));
    }
    EXPECT_TRUE(music.isPlaying());
}
} // namespace
