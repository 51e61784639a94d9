#include <Kobaltrix/KXSprite.h>

#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {
using namespace std::string_literals;

// A sprite with one of everything, byte for byte.
const std::string example = "KXSPRITE\1\0\0\0\x08\0\0\0hero.png"
                            "\1\0\0\0\3\0\0\0hit\0\0\0\x40\0\0\x40\x40\x0a\0\0\0\x14\0\0\0"
                            "\1\0\0\0\4\0\0\0idle\1\0\0\0\5\0\0\0\0\0\0\0\0\0\0\0\x10\0\0\0\x10\0\0\0"
                            "\xff\xff\xff\xff"s;

std::string take(char* text) {
    const std::string copy = text ? text : "(none)";
    std::free(text);
    return copy;
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

long openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

// Number `value` in place of the four bytes at `offset`.
std::string with(std::string bytes, std::size_t offset, std::int32_t value) {
    std::memcpy(bytes.data() + offset, &value, sizeof value);
    return bytes;
}

struct SpriteFile : testing::Test {
    ~SpriteFile() override { _KXCleanTempStrings(); }

    int load(const std::string& bytes) { return sprite.load(folder.write("hero.spr", bytes).c_str()); }

    // Everything a file stores, in one line.
    std::string summary() {
        std::string all = take(sprite.textureName());
        for (int i = 0; i < sprite.numberOfBoundingBoxes(); ++i) {
            const std::string name = take(sprite.boundingBoxAtIndex(i));
            all += " [" + name + "]" + KXRectToStringi(sprite.boundingBoxNamed(name.c_str()));
        }
        for (int i = 0; i < sprite.numberOfAnimations(); ++i) {
            const std::string name = take(sprite.animationAtIndex(i));
            const int frames = sprite.numberOfFrames(name.c_str());
            all += " <" + name + ">" + std::to_string(sprite.animationLoops(name.c_str()));
            KXRect bounds;
            int duration;
            for (int k = 0; k < frames && k < 3; ++k) {
                sprite.getFrameInfo(k, name.c_str(), &bounds, &duration);
                all += " " + std::to_string(duration) + KXRectToStringi(bounds);
            }
            if (frames > 3)
                all += " and " + std::to_string(frames - 3) + " more";
        }
        return all;
    }

    TemporaryFolder folder;
    KXSprite sprite;
};

const char* const wholeExample = "hero.png [hit]{ (2, 3) : (10, 20) } <idle>-1 5{ (0, 0) : (16, 16) }";

TEST_F(SpriteFile, TheExampleByteForByte) {
    sprite.setTextureName("hero.png");
    sprite.addBoundingBox("hit", {{2, 3}, {10.9f, 20.5f}});
    sprite.addFrameInfo("idle", {{0, 0}, {16.5f, 16}}, 5);
    EXPECT_EQ(sprite.save((folder / "saved.spr").c_str()), -1);
    ASSERT_EQ(example.size(), 91u);
    EXPECT_EQ(contentOf(folder / "saved.spr"), example);

    sprite.addBoundingBox("other", KXZeroRect);
    sprite.addAnimation("other");
    sprite.setAnimation("idle");
    sprite.setAlpha(0.5f);
    EXPECT_EQ(load(with(example, 8, 2)), -1) << "a later version";
    EXPECT_EQ(summary(), wholeExample);
    EXPECT_EQ(sprite.numberOfFrames(), 1) << "the current animation is found again";
    EXPECT_EQ(sprite.alpha(), 0.5f);
    sprite.save((folder / "again.spr").c_str());
    EXPECT_EQ(contentOf(folder / "again.spr"), example);
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
    sprite.setTextureName("old");
    EXPECT_EQ(sprite.load(path.c_str()), -1);
    EXPECT_EQ(summary(), "(none) []{ (0, -2) : (-3, 2147483647) } <" + longName +
                             ">-1 -2147483648{ (0, 0) : (0, 0) } <" + odd +
                             ">0 2147483647{ (0, 0) : (0, 0) }");
    EXPECT_EQ(sprite.boundingBoxNamed("").origin.y, -2.25f);
}

TEST_F(SpriteFile, FilesCutAtEveryByte) {
    const std::string box = " []{ (0, 0) : (-1, -1) }", hit = " [hit]";
    const auto frame = [](const char* values) { return " <idle>-1 "s + values; };
    // From this length on the file is read as this.
    const struct {
        std::size_t from;
        int result;
        std::string content;
    } stages[] = {{0, 0, "untouched"},
                  {8, -1, "untouched"},
                  {12, -1, "(none)"},
                  {16, -1, ""},
                  {17, -1, "h"},
                  {23, -1, "hero.pn"},
                  {24, -1, "hero.png"},
                  {28, -1, "hero.png" + box},
                  {32, -1, "hero.png" + box},
                  {33, -1, "hero.png [h]{ (0, 0) : (-1, -1) }"},
                  {35, -1, "hero.png" + hit + "{ (0, 0) : (-1, -1) }"},
                  {39, -1, "hero.png" + hit + "{ (2, 0) : (-1, -1) }"},
                  {43, -1, "hero.png" + hit + "{ (2, 3) : (-1, -1) }"},
                  {47, -1, "hero.png" + hit + "{ (2, 3) : (10, -1) }"},
                  {51, -1, "hero.png" + hit + "{ (2, 3) : (10, 20) }"},
                  {67, -1, "hero.png" + hit + "{ (2, 3) : (10, 20) }" + frame("-1{ (0, 0) : (-1, -1) }")},
                  {71, -1, "hero.png" + hit + "{ (2, 3) : (10, 20) }" + frame("5{ (0, 0) : (-1, -1) }")},
                  {83, -1, "hero.png" + hit + "{ (2, 3) : (10, 20) }" + frame("5{ (0, 0) : (16, -1) }")},
                  {87, -1, wholeExample}};
    const long before = openFiles();
    const auto* stage = stages;
    for (std::size_t length = 0; length <= example.size(); ++length) {
        SCOPED_TRACE(length);
        if (stage + 1 != std::end(stages) && length == stage[1].from)
            ++stage;
        if ((length > 17 && length < 23) || length == 34)
            continue; // letter by letter
        sprite._clearAnimations();
        sprite._clearBoundingBoxes();
        sprite.setTextureName("untouched");
        EXPECT_EQ(load(example.substr(0, length)), stage->result);
        EXPECT_EQ(summary(), stage->content);
    }
    EXPECT_LE(openFiles(), before + 1);
}

TEST_F(SpriteFile, LengthsAndCountsFromStrangers) {
    const std::string head = "hero.png", box = head + " [hit]{ (2, 3) : (10, 20) }";
    const std::string beyond = "{ (0, 0) : (-1, -1) }", more = " -1" + beyond + " and 4095 more";
    const std::string shifted = head + " []{ (0, 0) : (171982848, 335544320) }"; // read three bytes early
    const std::string unnamed = box + " <>-1 1{ (0, 0) : (0, 16) } 16" + beyond + more;
    const struct {
        std::size_t offset;
        std::int32_t value;
        std::string content;
    } fields[] = {
        // the version
        {8, 0, "untouched"},
        {8, -1, "untouched"},
        {8, INT_MIN, "untouched"},
        {8, INT_MAX, wholeExample},
        // the length of the texture's name; what follows is then read out of step
        {12, 0, "(none) []" + beyond + " [\1]" + beyond},
        {12, 1, "h []" + beyond},
        {12, -1, "(none) []" + beyond + " [\1]" + beyond},
        {12, INT_MAX, "hero.png\1"}, // all that is left, as far as it is text
        // the number of boxes
        {24, 0, head},
        {24, 1, wholeExample},
        {24, -1, head},
        {24, INT_MAX,
         head + " []" + beyond + " [\4]{ (2147483647, 0) : (83886080, 0) } [hit]{ (2, 3) : (10, 20) }"},
        // the length of the box's name
        {28, 0, shifted},
        {28, 1, head + " [h]{ (0, 0) : (671808, 1310720) }"},
        {28, -1, shifted},
        {28, INT_MAX, head + " [hit]" + beyond},
        // the number of animations
        {51, 0, box},
        {51, 1, wholeExample},
        {51, -1, box},
        {51, INT_MAX, wholeExample},
        // the length of the animation's name
        {55, 0, unnamed},
        {55, 1, box + " <i>-1 83886080{ (0, 0) : (268435456, 268435456) } -16777216" + beyond + more},
        {55, -1, unnamed},
        {55, INT_MAX, box},
        // the number of frames; the loops flag is the beginning of a second one, the others lie past the end
        {63, 0, box},
        {63, 1, wholeExample},
        {63, -1, box},
        {63, INT_MAX, box + " <idle>-1 5{ (0, 0) : (16, 16) } -1" + beyond + more},
    };
    for (const auto& field : fields) {
        SCOPED_TRACE(std::to_string(field.value) + " at " + std::to_string(field.offset));
        sprite._clearAnimations();
        sprite._clearBoundingBoxes();
        sprite.setTextureName("untouched");
        EXPECT_EQ(load(with(example, field.offset, field.value)), -1);
        EXPECT_EQ(summary(), field.content);
    }
    // Every field at once, at every place, in any alignment.
    for (const std::int32_t value : {0, 1, -1, INT_MAX})
        for (std::size_t offset = 12; offset + 4 <= example.size(); ++offset)
            EXPECT_EQ(load(with(example, offset, value)), -1);
}

TEST_F(SpriteFile, RepeatedNamesAndZeroBytes) {
    const std::string frame = "\2\0\0\0"s + std::string(16, 0), animation = "\1\0\0\0a\1\0\0\0"s + frame;
    EXPECT_EQ(load("KXSPRITE\1\0\0\0\5\0\0\0ab\0cd\2\0\0\0"s + "\3\0\0\0a\0b"s + std::string(16, 1) +
                   "\1\0\0\0a"s + std::string(16, 0) + "\3\0\0\0"s + animation + "\7\0\0\0"s + animation +
                   "\0\0\0\0"s + "\1\0\0\0a\0\0\0\0\3\0\0\0"s),
              -1);
    EXPECT_EQ(summary(), "ab [a]{ (0, 0) : (0, 0) } <a>3 2{ (0, 0) : (0, 0) } 2{ (0, 0) : (0, 0) }");
}

TEST_F(SpriteFile, FilesThatAreNone) {
    sprite.setTextureName("kept");
    sprite.addAnimation("kept");
    const std::string before = summary(),
                      foreign = folder.write("foreign.spr", "KXSPRITX" + example.substr(8));
    const long open = openFiles();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(sprite.load(foreign.c_str()), 0);
    EXPECT_LE(openFiles(), open + 1);
    EXPECT_EQ(load(""), 0);
    EXPECT_EQ(sprite.load(folder.path().c_str()), 0);
    for (const std::string& path : {folder / "missing.spr", folder / "no such folder/a.spr", ""s})
        EXPECT_EQ(sprite.load(path.c_str()), -1);
    EXPECT_EQ(sprite.load(nullptr), -1);
    EXPECT_EQ(sprite.save(nullptr), -1);
    EXPECT_EQ(sprite.save((folder / "no such folder/a.spr").c_str()), -1);
    EXPECT_EQ(sprite.save(folder.path().c_str()), -1);
    EXPECT_EQ(summary(), before);
    EXPECT_LE(openFiles(), open + 1);
}
} // namespace
