#include <Kobaltrix/KXImage.h>

#include "support/Denied.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXError.h>
#include <gtest/gtest.h>

namespace {
TEST(Image, AFullDiskLeavesTheFileAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder.write("image.png", "as it was");
    KXImage image(9, 9);
    EXPECT_EQ((FullDisk(20), image.writeToPNG(path.c_str())), 0);
    EXPECT_EQ(KXError(), "Unable to write a PNG file (" + path + "): File too large");
    EXPECT_EQ(contentOf(path), "as it was");
}
} // namespace
