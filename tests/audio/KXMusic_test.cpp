#include <Kobaltrix/KXMusic.h>

#include "audio/AudioTest.h"

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

    std::filesystem::remove(song);
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
} // namespace
