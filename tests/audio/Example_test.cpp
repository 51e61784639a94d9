// The program in docs/sound.md, with its files and without.

#include "audio/AudioTest.h"
#include "support/Program.h"

namespace {
TEST_F(AudioTest, TheExampleRuns) {
    EXPECT_EQ(runProgram(folder, "'" SOUND_EXAMPLE "'").status, 2);
    folder.write("jump.wav", wav);
    folder.write("song.ogg", ogg);
    EXPECT_EQ(runProgram(folder, "'" SOUND_EXAMPLE "'").status, 0);
}
} // namespace
