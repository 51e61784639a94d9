#include <Kobaltrix/KXSprite.h>

#include "util/KXString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>

namespace {
struct Sprite : testing::Test {
    ~Sprite() override { _KXCleanTempStrings(); }

    static std::string take(char* text) {
        const std::string copy = text ? text : "(none)";
        std::free(text);
        return copy;
    }

    // The durations of an animation's frames.
    std::string frames(const char* name) const {
        std::string all;
        for (int i = 0; i < sprite.numberOfFrames(name); ++i) {
            int duration = 0;
            sprite.getFrameInfo(i, name, nullptr, &duration);
            all += std::to_string(duration) + " ";
        }
        return all;
    }

    std::string animations() const {
        std::string all;
        for (int i = 0; i < sprite.numberOfAnimations(); ++i)
            all += take(sprite.animationAtIndex(i)) + " ";
        return all;
    }

    KXSprite sprite;
};

TEST_F(Sprite, Frames) {
    sprite.addAnimation("walk");
    sprite.addFrameInfo("walk", {{1, 2}, {3, 4}}, 5);
    sprite.addAnimation("walk");
    EXPECT_EQ(frames("walk"), "0 5 ");
    sprite.addFrameInfo("jump", {{0, 0}, {10, 40}}, 9);
    EXPECT_EQ(frames("jump"), "9 ");
    for (const int i : {-1, 3, INT_MAX, INT_MIN}) {
        sprite.insertFrameInfo(i, "walk", KXZeroRect, 99);
        sprite.setFrameInfo(i, "walk", KXZeroRect, 99);
        sprite.removeFrameInfo(i, "walk");
    }
    sprite.insertFrameInfo(2, "walk", KXZeroRect, 7);
    sprite.insertFrameInfo(0, "walk", KXZeroRect, 3);
    sprite.setFrameInfo(1, "walk", {{0, 0}, {30, -20}}, 1);
    EXPECT_EQ(frames("walk"), "3 1 5 7 ");
    sprite.removeFrameInfo(2, "walk");
    EXPECT_EQ(frames("walk"), "3 1 7 ");

    KXRect bounds = {{9, 9}, {9, 9}};
    int duration = 9;
    for (const char* name : {"walk", "none", static_cast<const char*>(nullptr)})
        sprite.getFrameInfo(name ? 3 : 0, name, &bounds, &duration);
    EXPECT_EQ(bounds.size.width + static_cast<float>(duration), 18);
    sprite.getFrameInfo(1, "walk", &bounds, nullptr);
    EXPECT_EQ(bounds.size.width, 30);

    sprite.addFrameInfo("jump", {{0, 0}, {30, 20}}, 1);
    sprite.addFrameInfo("jump", {{0, 0}, {NAN, -1}}, 1);
    EXPECT_EQ(sprite.fullSize("jump").width, 30);
    EXPECT_EQ(sprite.fullSize("jump").height, 40);
    EXPECT_EQ(sprite.fullSize("none").width + sprite.fullSize().height, 0);
    sprite.setAnimation("jump");
    EXPECT_EQ(sprite.fullSize().height, 40);
    EXPECT_EQ(sprite.numberOfFrames(), 3);
    for (int i = 0; i < 3; ++i)
        sprite.removeFrameInfo(0, "jump");
    EXPECT_EQ(sprite.numberOfFrames("jump"), -1);
    EXPECT_EQ(sprite.numberOfFrames(), -1);
    EXPECT_EQ(animations(), "walk ");
}

TEST_F(Sprite, NamesInByteOrder) {
    for (const char* name : {"jump", "Run", "\u00e9", "", "jum"}) {
        sprite.addAnimation(name);
        sprite.addBoundingBox(name, {{1, 1}, {1, static_cast<float>(*name)}});
    }
    EXPECT_EQ(animations(), " Run jum jump \u00e9 ");
    EXPECT_EQ(take(sprite.boundingBoxAtIndex(1)) + take(sprite.boundingBoxAtIndex(4)), "Run\u00e9");
    for (const int i : {-1, 5, INT_MAX, INT_MIN}) {
        EXPECT_EQ(sprite.animationAtIndex(i), nullptr);
        EXPECT_EQ(sprite.boundingBoxAtIndex(i), nullptr);
    }
    sprite.setAnimationLoops("Run", 4);
    sprite.renameAnimation("Run", "jump");
    sprite.renameAnimation("\u00e9", "\u00e9");
    sprite.renameAnimation("none", "jum");
    EXPECT_EQ(animations(), " jum jump ");
    EXPECT_EQ(sprite.animationLoops("jump"), 4);
    EXPECT_EQ(sprite.animationLoops("jum"), -1);
    EXPECT_EQ(sprite.animationLoops("Run"), 0);
    sprite.renameBoundingBox("Run", "jump");
    sprite.renameBoundingBox("\u00e9", "\u00e9");
    sprite.renameBoundingBox("none", "jum");
    EXPECT_EQ(sprite.numberOfBoundingBoxes(), 3);
    EXPECT_EQ(sprite.boundingBoxNamed("jump").size.height, 'R');
    EXPECT_EQ(sprite.boundingBoxNamed("jum").size.height, 'j');
    EXPECT_EQ(sprite.boundingBoxNamed("Run").size.width, 0);
    sprite.setBoundingBox("jum", {{0, 0}, {0, 2}});
    EXPECT_EQ(sprite.boundingBoxNamed("jum").size.height, 2);
    sprite.removeBoundingBox("jum");
    sprite.removeBoundingBox("none");
    EXPECT_EQ(sprite.numberOfBoundingBoxes(), 2);
}

TEST_F(Sprite, NullNames) {
    sprite.addAnimation("a");
    sprite.addBoundingBox("a", KXZeroRect);
    sprite.addAnimation(nullptr);
    sprite.addFrameInfo(nullptr, KXZeroRect, 1);
    sprite.removeFrameInfo(0, nullptr);
    sprite.renameAnimation("a", nullptr);
    sprite.removeAnimation(nullptr);
    sprite.addBoundingBox(nullptr, KXZeroRect);
    sprite.renameBoundingBox("a", nullptr);
    sprite.removeBoundingBox(nullptr);
    EXPECT_EQ(animations() + take(sprite.boundingBoxAtIndex(0)), "a a");
    EXPECT_EQ(sprite.numberOfFrames(nullptr), -1);
    EXPECT_EQ(sprite.animationLoops(nullptr), 0);
    EXPECT_EQ(sprite.fullSize(nullptr).width + sprite.boundingBoxNamed(nullptr).size.width, 0);
    EXPECT_STREQ(sprite.currentAnimation(), "(null)");
    EXPECT_EQ(sprite.textureName(), nullptr);
}

TEST_F(Sprite, Playback) {
    const struct {
        int loops, durations[3];
        const char* shown; // frame after each poll
        int finishedAfter; // polls, 0 for never
    } cases[] = {
        {0, {2, 2, 2}, "01122222", 4},        {-1, {2, 2, 2}, "01122001", 0},
        {2, {0, 1, -5}, "12012012", 0},       {0, {3, 1, INT_MAX}, "00122222", 4},
        {-1, {1, 2, INT_MAX}, "11222222", 0},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.shown);
        sprite.removeAnimation("a");
        for (const int duration : one.durations)
            sprite.addFrameInfo("a", KXZeroRect, duration);
        sprite.setAnimationLoops("a", one.loops);
        sprite.setAnimation("a");
        EXPECT_EQ(sprite.currentFrameIndex(), 0);
        for (int polls = 1; polls <= 8; ++polls) {
            sprite.poll();
            EXPECT_EQ(sprite.currentFrameIndex(), one.shown[polls - 1] - '0') << polls;
            EXPECT_EQ(sprite.animationFinished(), one.finishedAfter && polls >= one.finishedAfter ? -1 : 0);
        }
    }
}

TEST_F(Sprite, PlayingWhatIsGone) {
    sprite.poll();
    EXPECT_EQ(sprite.currentFrameIndex(), 0);
    EXPECT_EQ(sprite.animationFinished(), 0);
    sprite.randomizeCurrentFrame();
    sprite.addFrameInfo("a", KXZeroRect, 3);
    sprite.addFrameInfo("a", KXZeroRect, 2);
    sprite.setAnimation("a");
    for (int polls = 0; polls < 4; ++polls)
        sprite.poll();
    sprite.setAnimation(nullptr); // leaves frame and timer as they are
    sprite.poll();
    EXPECT_EQ(sprite.currentFrameIndex(), 1);
    sprite.setAnimation("none");
    EXPECT_EQ(sprite.currentFrameIndex(), 0);
    EXPECT_STREQ(sprite.currentAnimation(), "none");
    sprite.poll(); // counts without an end in sight
    sprite.poll();
    EXPECT_EQ(sprite.currentFrameIndex(), 2);
    sprite.renameAnimation("a", "none"); // there now, and shorter
    EXPECT_EQ(sprite.numberOfFrames(), 2);
    sprite.poll();
    EXPECT_EQ(sprite.currentFrameIndex(), 0);
    sprite.setAnimation("none"); // the same again starts afresh
    EXPECT_EQ(sprite.currentFrameIndex(), 0);
    sprite.setAnimationLoops("none", 0);
    sprite._clearAnimations();
    EXPECT_EQ(sprite.animationFinished(), 0);
}

TEST_F(Sprite, RandomFramesSpreadOverTheAnimation) {
    for (int i = 0; i < 3; ++i)
        sprite.addFrameInfo("a", KXZeroRect, 50);
    std::srand(1);
    int waits[3][51] = {};
    for (int i = 0; i < 4000; ++i) {
        sprite.setAnimation("a");
        sprite.randomizeCurrentFrame();
        const int frame = sprite.currentFrameIndex();
        ASSERT_TRUE(frame >= 0 && frame < 3);
        int polls = 0;
        for (; sprite.currentFrameIndex() == frame && polls < 50; ++polls)
            sprite.poll();
        ++waits[frame][polls];
    }
    for (const auto& ofFrame : waits)
        for (int polls = 1; polls <= 50; ++polls)
            EXPECT_GT(ofFrame[polls], 0) << polls;
}

TEST_F(Sprite, CloneAndPrint) {
    sprite.setTextureName("t.png");
    sprite.setAlpha(-2);
    sprite.setScale(3);
    sprite.setRotation(INT_MIN);
    sprite.addFrameInfo("a", {{1.9f, -2.9f}, {NAN, 1e20f}}, 5);
    sprite.addFrameInfo("a", KXZeroRect, 6);
    sprite.setAnimationLoops("a", 0);
    sprite.addAnimation("empty");
    sprite._getInfoWithName("empty")->removeInfo(0);
    sprite.addBoundingBox("b", {{1, 2}, {3, 4}});
    sprite.setAnimation("a");

    const std::unique_ptr<KXSprite> copy(sprite.clone());
    EXPECT_EQ(take(copy->textureName()), "t.png");
    EXPECT_EQ(copy->alpha(), -2.0f);
    EXPECT_EQ(copy->scale(), 3.0f);
    EXPECT_EQ(copy->rotation(), INT_MIN);
    EXPECT_EQ(copy->numberOfBoundingBoxes(), 0);
    EXPECT_EQ(copy->numberOfFrames(), -1);
    EXPECT_EQ(copy->numberOfFrames("empty"), 1);
    EXPECT_EQ(copy->animationLoops("a"), 0);
    copy->addFrameInfo("a", KXZeroRect, 7);
    EXPECT_EQ(copy->numberOfFrames("a"), 3);
    EXPECT_EQ(frames("a"), "5 6 ");

    testing::internal::CaptureStdout();
    sprite.print();
    KXSprite().print();
    const std::string printed = testing::internal::GetCapturedStdout();
    const std::string body = printed.substr(printed.find('\n') + 1);
    EXPECT_EQ(printed.rfind("Animation: 0x", 0), 0u);
    EXPECT_EQ(body.substr(0, body.find("Animation: 0x")),
              "Texture name: t.png\nNumber of animations: 2\n - Animation: a\n      Frames: 2\n"
              "        Frame: 0\n         Duration: 5\n           Bounds: (1, -2), (0, 2147483647)\n"
              "        Frame: 1\n         Duration: 6\n           Bounds: (0, 0), (0, 0)\n"
              " - Animation: empty\n      Frames: 0\nNumber of bounding boxes: 1\n - Bounding box: b\n"
              "               : { (1.000000, 2.000000) : (3.000000, 4.000000) }\n");
    EXPECT_NE(body.find("Texture name: (null)\nNumber of animations: 0\nNumber of bounding boxes: 0\n"),
              std::string::npos);
}
} // namespace
