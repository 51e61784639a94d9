#include "sprite/SpriteText.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <set>
#include <tuple>

namespace {
struct Sprite : testing::Test {
    ~Sprite() override { _KXCleanTempStrings(); }

    // The frame on show and those after each poll, as many as in a text of this kind; "!" follows where it
    // has finished.
    std::string played(const std::string& example) {
        std::string all;
        while (all.size() < example.size()) {
            if (!all.empty())
                sprite.poll();
            all += std::to_string(sprite.currentFrameIndex()) + (sprite.animationFinished() ? "!" : "");
        }
        return all;
    }

    KXSprite sprite;
};

TEST_F(Sprite, Frames) {
    const std::string zero = "{ (0, 0) : (0, 0) }", first = "<walk>-1 3" + zero + " 1{ (0, 0) : (30, -20) } ";
    sprite.addAnimation("walk");
    sprite.addFrameInfo("walk", {{1, 2}, {3, 4}}, 5);
    sprite.addAnimation("walk");
    EXPECT_EQ(summary(sprite), "(none) <walk>-1 0" + zero + " 5{ (1, 2) : (3, 4) }");
    for (const int i : {-1, 3, INT_MAX, INT_MIN}) {
        sprite.insertFrameInfo(i, "walk", KXZeroRect, 99);
        sprite.setFrameInfo(i, "walk", KXZeroRect, 99);
        sprite.removeFrameInfo(i, "walk");
    }
    sprite.insertFrameInfo(2, "walk", KXZeroRect, 7);
    sprite.insertFrameInfo(0, "walk", KXZeroRect, 3);
    sprite.setFrameInfo(1, "walk", {{0, 0}, {30, -20}}, 1);
    EXPECT_EQ(summary(sprite), "(none) " + first + "5{ (1, 2) : (3, 4) } and 1 more");
    sprite.removeFrameInfo(2, "walk");
    EXPECT_EQ(summary(sprite), "(none) " + first + "7" + zero);

    KXRect bounds = {{9, 9}, {9, 9}};
    int duration = 9;
    sprite.getFrameInfo(3, "walk", &bounds, &duration);
    sprite.getFrameInfo(0, nullptr, &bounds, &duration);
    sprite.getFrameInfo(0, "walk", nullptr, nullptr);
    EXPECT_EQ(bounds.size.width + static_cast<float>(duration), 18);

    for (const KXSize size : {KXSize{10, 40}, {30, 20}, {NAN, -1}})
        sprite.addFrameInfo("jump", {KXZeroPoint, size}, 1);
    EXPECT_EQ(sprite.fullSize("jump").width, 30);
    EXPECT_EQ(sprite.fullSize().height, 0);
    sprite.setAnimation("jump");
    EXPECT_EQ(sprite.fullSize().height, 40);
    for (int left = 3; left > 0; --left) {
        EXPECT_EQ(sprite.numberOfFrames(), left);
        sprite.removeFrameInfo(0, "jump");
    }
    EXPECT_EQ(sprite.numberOfFrames(), -1);
    EXPECT_EQ(summary(sprite), "(none) " + first + "7" + zero);
}

TEST_F(Sprite, NamesInByteOrder) {
    for (const char* name : {"jump", "Run", "\u00e9", "", "jum"}) {
        sprite.addFrameInfo(name, KXZeroRect, *name);
        sprite.addBoundingBox(name, {{1, 1}, {1, static_cast<float>(*name)}});
    }
    EXPECT_EQ(take(sprite.animationAtIndex(1)) + take(sprite.boundingBoxAtIndex(4)), "Run\u00e9");
    for (const int i : {-1, 5, INT_MAX, INT_MIN}) {
        EXPECT_EQ(sprite.animationAtIndex(i), nullptr);
        EXPECT_EQ(sprite.boundingBoxAtIndex(i), nullptr);
    }
    sprite.setAnimationLoops("Run", 4);
    const std::pair<const char*, const char*> renames[] = {
        {"Run", "jump"}, {"\u00e9", "\u00e9"}, {"none", "jum"}, {nullptr, "jum"}, {"jum", nullptr}};
    for (const auto& [from, to] : renames) {
        sprite.renameAnimation(from, to);
        sprite.renameBoundingBox(from, to);
    }
    for (const char* name : {"", "none", static_cast<const char*>(nullptr)}) {
        sprite.removeAnimation(name);
        sprite.removeBoundingBox(name);
    }
    sprite.setBoundingBox("jum", {{0, 0}, {0, 2}});
    EXPECT_EQ(summary(sprite), "(none) [jum]{ (0, 0) : (0, 2) } [jump]{ (1, 1) : (1, 82) }"
                               " <jum>-1 106{ (0, 0) : (0, 0) } <jump>4 82{ (0, 0) : (0, 0) }");
    sprite.addAnimation(nullptr);
    sprite.addFrameInfo(nullptr, KXZeroRect, 1);
    sprite.addBoundingBox(nullptr, KXZeroRect);
    EXPECT_EQ(sprite.numberOfAnimations() + sprite.numberOfBoundingBoxes(), 4);
    for (const char* name : {"Run", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(sprite.animationLoops(name), 0);
        EXPECT_EQ(sprite.boundingBoxNamed(name).size.width, 0);
        EXPECT_EQ(sprite.fullSize(name).width, 0);
        EXPECT_EQ(sprite.numberOfFrames(name), -1);
    }
}

TEST_F(Sprite, Playback) {
    // Each begins anew, whatever the time the last one has run.
    const std::tuple<int, std::array<int, 3>, const char*> cases[] = {{-1, {1, 2, INT_MAX}, "0112222"},
                                                                      {0, {2, 2, 2}, "00112!2!2!"},
                                                                      {-1, {2, 2, 2}, "001122001"},
                                                                      {2, {0, 1, -5}, "0120120"},
                                                                      {0, {3, 1, INT_MAX}, "00012!2!"}};
    for (const auto& [loops, durations, shown] : cases) {
        sprite.removeAnimation("a");
        for (const int duration : durations)
            sprite.addFrameInfo("a", KXZeroRect, duration);
        sprite.setAnimationLoops("a", loops);
        sprite.setAnimation("a");
        EXPECT_EQ(played(shown), shown);
    }
}

TEST_F(Sprite, PlayingWhatIsGone) {
    EXPECT_EQ(played("00"), "00");
    EXPECT_STREQ(sprite.currentAnimation(), "(null)");
    sprite.randomizeCurrentFrame();
    sprite.addFrameInfo("a", KXZeroRect, 3);
    sprite.addFrameInfo("a", KXZeroRect, 2);
    sprite.setAnimation("a");
    EXPECT_EQ(played("0001"), "0001");
    sprite.setAnimation(nullptr); // leaves frame and timer as they are
    EXPECT_EQ(played("111"), "111");
    sprite.setAnimation("none");
    EXPECT_STREQ(sprite.currentAnimation(), "none");
    EXPECT_EQ(played("012"), "012") << "counts with each poll";
    sprite.renameAnimation("a", "none"); // there now, and shorter
    EXPECT_EQ(sprite.numberOfFrames(), 2);
    EXPECT_EQ(played("200011"), "200011");
    sprite.setAnimationLoops("none", 0);
    sprite.removeAnimation("none");
    EXPECT_EQ(played("12233"), "12233") << "counts with the duration of the frame that was on show";
    sprite.setAnimation("none");
    EXPECT_EQ(sprite.currentFrameIndex(), 0);
}

TEST_F(Sprite, RandomFramesSpreadOverTheAnimation) {
    // The time runs on by up to 100 steps, in the duration of the frame that was on show before: 50.
    for (const int duration : {50, 60, 20})
        sprite.addFrameInfo("a", KXZeroRect, duration);
    std::srand(1);
    std::set<std::pair<int, int>> seen; // frames, and the polls that it took to the next one
    for (int i = 0; i < 4000; ++i) {
        sprite.setAnimation("a");
        sprite.randomizeCurrentFrame();
        const int frame = sprite.currentFrameIndex();
        int polls = 0;
        for (; sprite.currentFrameIndex() == frame && polls < 51; ++polls)
            sprite.poll();
        seen.emplace(frame, polls);
    }
    EXPECT_EQ(seen.size(), 3u * 50);
    EXPECT_EQ(std::pair(*seen.begin(), *seen.rbegin()), std::pair(std::pair(0, 1), std::pair(2, 50)));
}

TEST_F(Sprite, CloneAndPrint) {
    sprite.setTextureName("t.png");
    sprite.setAlpha(-2);
    sprite.setScale(3);
    sprite.setRotation(INT_MIN);
    sprite.addFrameInfo("a", {{1.9f, -2.9f}, {NAN, 1e20f}}, 5);
    sprite.addFrameInfo("a", KXZeroRect, 9);
    sprite.setAnimationLoops("a", 0);
    sprite.addAnimation("empty");
    sprite._getInfoWithName("empty")->removeInfo(0);
    sprite.addBoundingBox("b", {{1, 2}, {3, 4}});
    sprite.setAnimation("a");

    const std::unique_ptr<KXSprite> copy(sprite.clone());
    EXPECT_EQ(std::tuple(copy->alpha(), copy->scale(), copy->rotation(), copy->numberOfFrames()),
              std::tuple(-2.0f, 3.0f, INT_MIN, -1));
    sprite.setFrameInfo(1, "a", KXZeroRect, 6);
    EXPECT_EQ(summary(*copy), "t.png <a>0 5{ (1, -2) : (0, 2147483647) } 9{ (0, 0) : (0, 0) }"
                              " <empty>-1 0{ (0, 0) : (0, 0) }");

    const auto addressOf = [](const KXSprite& any) {
        return std::string(KXTempString("%p", static_cast<const void*>(&any)));
    };
    const KXSprite empty;
    testing::internal::CaptureStdout();
    sprite.print();
    empty.print();
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(printed,
              "Animation: " + addressOf(sprite) +
                  "\nTexture name: t.png\nNumber of animations: 2\n"
                  " - Animation: a\n      Frames: 2\n"
                  "        Frame: 0\n         Duration: 5\n           Bounds: (1, -2), (0, 2147483647)\n"
                  "        Frame: 1\n         Duration: 6\n           Bounds: (0, 0), (0, 0)\n"
                  " - Animation: empty\n      Frames: 0\n"
                  "Number of bounding boxes: 1\n - Bounding box: b\n"
                  "               : { (1.000000, 2.000000) : (3.000000, 4.000000) }\n"
                  "Animation: " +
                  addressOf(empty) +
                  "\nTexture name: (null)\nNumber of animations: 0\n"
                  "Number of bounding boxes: 0\n");
}
} // namespace
