#include "RenderTest.h"

#include "support/Denied.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXTexture.h>

namespace {
struct FilesOfPictures : RenderTest {
    const TemporaryFolder folder;
    const std::string path = folder.write("picture", "as it was");
};

TEST_F(FilesOfPictures, StayAsTheyWereOnAFullDisk) {
    EXPECT_EQ((FullDisk(1000), window->saveBuffer(path.c_str(), 0)), 0);
    EXPECT_TRUE(std::string(KXError()).starts_with("Unable to save bitmap image (" + path)) << KXError();
    KXTexture texture(64, 64);
    for (const auto& [file, reason] :
         {std::pair{std::string("/dev/full"), "No space left on device"}, {path, "File too large"}}) {
        EXPECT_EQ((FullDisk(20), texture.writeToPNG(file.c_str())), 0);
        EXPECT_EQ(KXError(), "Unable to write a PNG file (" + file + "): " + reason);
    }
    EXPECT_EQ(contentOf(path), "as it was");
}
} // namespace
