// What the pages under docs/ claim about bytes.

#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXSprite.h>

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {
std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The bytes of a page's dump: lines of an offset, in columns 5 to 52 up to 16 bytes, and what they mean.
std::string dumpIn(const std::string& page) {
    std::istringstream text(contentOf(DOCS "/" + page));
    std::string bytes;
    for (std::string line; std::getline(text, line);) {
        if (line.size() < 4 || !std::isxdigit(line[0]) || !std::isxdigit(line[1]) ||
            line.compare(2, 2, "  ") != 0)
            continue;
        std::istringstream values(line.substr(4, 49));
        for (int byte; values >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST(Documents, TheBytesOfASpriteFile) {
    KXSprite sprite;
    sprite.setTextureName("hero.png");
    sprite.addBoundingBox("hit", {{2, 3}, {10, 20}});
    sprite.addFrameInfo("idle", {{0, 0}, {16, 16}}, 5);
    const TemporaryFolder folder;
    sprite.save((folder / "hero.spr").c_str());
    EXPECT_EQ(dumpIn("sprites.md"), contentOf(folder / "hero.spr"));
}
} // namespace
