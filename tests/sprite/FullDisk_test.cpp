#include <Kobaltrix/KXSprite.h>

#include "support/Denied.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXError.h>
#include <gtest/gtest.h>

namespace {
TEST(FullDisk, LeavesASpriteFileAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder.write("kept.spr", "as it was");
    KXSprite sprite;
    sprite.addAnimation("another");
    EXPECT_EQ((FullDisk(12), sprite.save(path.c_str()) + sprite.writeToFile(path.c_str())), -1);
    EXPECT_EQ(KXError(), path + ": cannot be written: File too large");
    EXPECT_EQ(contentOf(path), "as it was");
}
} // namespace
