#include "sprite/SpriteText.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXError.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <tuple>

namespace {
using namespace std::string_literals;

// A sprite with one of everything, byte for byte.
const std::string example = "KXSPRITE\1\0\0\0\x08\0\0\0hero.png"
                            "\1\0\0\0\3\0\0\0hit\0\0\0\x40\0\0\x40\x40\x0a\0\0\0\x14\0\0\0"
                            "\1\0\0\0\4\0\0\0idle\1\0\0\0\5\0\0\0\0\0\0\0\0\0\0\0\x10\0\0\0\x10\0\0\0"
                            "\xff\xff\xff\xff"s;

const char* const wholeExample = "hero.png [hit]{ (2, 3) : (10, 20) } <idle>-1 5{ (0, 0) : (16, 16) }";

// Number `value` in place of the four bytes at `offset`.
std::string with(std::string bytes, std::size_t offset, int value) {
    std::memcpy(bytes.data() + offset, &value, sizeof value);
    return bytes;
}

struct SpriteFile : testing::Test {
    int load(const std::string& bytes) { return sprite.load(folder.write("hero.spr", bytes).c_str()); }

    // Loads a file into a sprite that holds a name alone.
    void expectLoaded(const std::string& bytes, int result, const std::string& content) {
        sprite._clearAnimations();
        sprite._clearBoundingBoxes();
        sprite.setTextureName("untouched");
        EXPECT_EQ(load(bytes), result);
        EXPECT_EQ(summary(sprite), content);
    }

    TemporaryFolder folder;
    KXSprite sprite;
};

TEST_F(SpriteFile, TheExampleByteForByte) {
    sprite.setTextureName("hero.png");
    sprite.addBoundingBox("hit", {{2, 3}, {10.9f, 20.5f}});
    sprite.addFrameInfo("idle", {{0, 0}, {16.5f, 16}}, 5);
    EXPECT_EQ(sprite.save((folder / "saved.spr").c_str()), -1);
    EXPECT_EQ(contentOf(folder / "saved.spr"), example);

    sprite.addBoundingBox("other", KXZeroRect);
    sprite.addAnimation("other");
    sprite.setAnimation("idle");
    sprite.setAlpha(0.5f);
    EXPECT_EQ(load(with(example, 8, 2)), -1) << "a later version";
    EXPECT_EQ(summary(sprite), wholeExample);
    EXPECT_EQ(sprite.numberOfFrames(), 1) << "the current animation is found again";
    EXPECT_EQ(sprite.alpha(), 0.5f);
}

TEST_F(SpriteFile, ValuesSurviveAsFarAsTheFileHoldsThem) {
    const std::string longName(5000, 'n'), odd = "\u00e9 \U0001F3AE %s%n \n";
    sprite.addBoundingBox("", {{NAN, -2.25f}, {-3.75f, 1e20f}});
    sprite.addFrameInfo(longName.c_str(), KXZeroRect, INT_MIN);
    sprite.addFrameInfo(odd.c_str(), KXZeroRect, INT_MAX);
    sprite.setAnimationLoops(odd.c_str(), 0);
    sprite.addAnimation("empty");
    sprite._getInfoWithName("empty")->removeInfo(0);
    const std::string path = folder / "h\u00e9ro \U0001F3AE.spr";
    sprite.save(path.c_str());
    EXPECT_EQ(sprite.load(path.c_str()), -1);
    EXPECT_EQ(summary(sprite), "(none) []{ (0, -2) : (-3, 2147483647) } <" + longName +
                                   ">-1 -2147483648{ (0, 0) : (0, 0) } <" + odd +
                                   ">0 2147483647{ (0, 0) : (0, 0) }");
    EXPECT_EQ(sprite.boundingBoxNamed("").origin.y, -2.25f);
}

TEST_F(SpriteFile, FilesCutShort) {
    const std::string hit = "hero.png [hit]{ (2, 3) : (10, 20) }", idle = hit + " <idle>-1 ";
    const std::pair<std::size_t, std::string> cuts[] = {
        {8, "untouched"},
        {12, "(none)"},
        {23, "hero.pn"},
        {28, "hero.png []{ (0, 0) : (-1, -1) }"},
        {47, "hero.png [hit]{ (2, 3) : (10, -1) }"},
        {66, hit},
        {67, idle + "-1{ (0, 0) : (-1, -1) }"},
        {87, wholeExample},
    };
    for (const auto& [length, content] : cuts)
        expectLoaded(example.substr(0, length), -1, content);
    for (std::size_t length = 0; length < 8; ++length)
        expectLoaded(example.substr(0, length), 0, "untouched");
}

TEST_F(SpriteFile, LengthsAndCountsFromStrangers) {
    const std::string head = "hero.png", box = head + " [hit]{ (2, 3) : (10, 20) }";
    const std::string beyond = "{ (0, 0) : (-1, -1) }", more = " -1" + beyond + " and 4095 more";
    const std::tuple<std::size_t, int, std::string> fields[] = {
        {8, 0, "untouched"}, // the version
        {8, INT_MIN, "untouched"},
        {8, INT_MAX, wholeExample},
        // the length of the texture's name; what follows is then read out of step
        {12, -1, "(none) []" + beyond + " [\1]" + beyond},
        {12, INT_MAX, "hero.png\1"}, // all that is left, as far as it is text
        {24, -1, head},              // the number of boxes
        {24, INT_MAX,
         head + " []" + beyond + " [\4]{ (2147483647, 0) : (83886080, 0) } [hit]{ (2, 3) : (10, 20) }"},
        {28, INT_MAX, head + " [hit]" + beyond}, // the length of the box's name
        {51, -1, box},                           // the number of animations
        {51, INT_MAX, wholeExample},
        {55, 0, box + " <>-1 1{ (0, 0) : (0, 16) } 16" + beyond + more}, // the length of the animation's name
        {55, INT_MAX, box},
        {63, 0, box}, // the number of frames; the loops flag begins a second one, the others lie past the end
        {63, INT_MAX, box + " <idle>-1 5{ (0, 0) : (16, 16) } -1" + beyond + more},
    };
    for (const auto& [offset, value, content] : fields) {
        SCOPED_TRACE(std::to_string(value) + " at " + std::to_string(offset));
        expectLoaded(with(example, offset, value), -1, content);
    }
    // Every field at once, at every place, in any alignment.
    for (const int value : {0, 1, -1, INT_MAX})
        for (std::size_t offset = 12; offset + 4 <= example.size(); ++offset)
            EXPECT_EQ(load(with(example, offset, value)), -1);
}

TEST_F(SpriteFile, RepeatedNamesAndZeroBytes) {
    const std::string frame = "\2\0\0\0"s + std::string(16, 0), animation = "\1\0\0\0a\1\0\0\0"s + frame;
    // The texture's name is longer than two blocks that are read of the file at once.
    EXPECT_EQ(load("KXSPRITE\1\0\0\0\x28\x23\0\0ab\0"s + std::string(8997, 'c') + "\2\0\0\0\3\0\0\0a\0b"s +
                   std::string(16, 1) + "\1\0\0\0a"s + std::string(16, 0) + "\3\0\0\0"s + animation +
                   "\7\0\0\0"s + animation + "\0\0\0\0"s + "\1\0\0\0a\0\0\0\0\3\0\0\0"s),
              -1);
    EXPECT_EQ(summary(sprite), "ab [a]{ (0, 0) : (0, 0) } <a>3 2{ (0, 0) : (0, 0) } 2{ (0, 0) : (0, 0) }");
}

TEST_F(SpriteFile, FilesThatAreNone) {
    load(example);
    long open = 0;
    for (const bool isFirst : {true, false}) { // when Wine opens files of its own, and keeps them
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(load("KXSPRITX" + example.substr(8)), 0);
        EXPECT_EQ(sprite.load(folder.path().c_str()), 0);
        for (const std::string& path : {folder / "missing.spr", folder / "no such folder/a.spr", ""s})
            EXPECT_EQ(sprite.load(path.c_str()), -1);
        EXPECT_EQ(sprite.load(nullptr), -1);
        for (const std::string& path : {folder / "no such folder/a.spr", folder.path(), ""s})
            EXPECT_EQ(sprite.save(path.c_str()), -1);
        EXPECT_EQ(sprite.save(nullptr), -1);
        EXPECT_EQ(sprite.writeToFile(nullptr), 0);
        const std::string path = folder.write("kept.spr", example);
        sprite.addAnimation("another");
        EXPECT_EQ(sprite.writeToFile(path.c_str()), -1);
        EXPECT_EQ(contentOf(path).size(), example.size() + 4 + 7 + 28);
        sprite.removeAnimation("another");
        EXPECT_EQ(summary(sprite), wholeExample);
        if (isFirst)
            open = openFiles(); // that of the latest that was none among them
    }
    EXPECT_EQ(openFiles(), open);
}
} // namespace
