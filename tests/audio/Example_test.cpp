// The program in docs/sound.md, with its files and without.

#include "audio/AudioTest.h"

#include <cstdlib>

#include <sys/wait.h>

namespace {
int statusOfExample(const TemporaryFolder& folder) {
    const std::string command = "cd '" + folder.path() + "' && '" SOUND_EXAMPLE "'";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(AudioTest, TheExampleRuns) {
    EXPECT_EQ(statusOfExample(folder), 2);
    folder.write("jump.wav", wav);
    folder.write("song.ogg", ogg);
    EXPECT_EQ(statusOfExample(folder), 0);
}
} // namespace
