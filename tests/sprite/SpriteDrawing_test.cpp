#include <Kobaltrix/KXSprite.h>

#include "render/KXTextureCache.h"
#include "render/RenderTest.h"
#include "support/Allocations.h"
#include "support/System.h"

namespace {
struct SpriteDrawing : RenderTest {
    SpriteDrawing() {
        write("sheet \u00e9.png", 0);
        sprite.setTexturePath(folder.path().c_str());
        sprite.setTextureName("sheet \u00e9.png");
        sprite.addFrameInfo("walk", {{0, 0}, {4, 4}}, 1);
        sprite.addFrameInfo("walk", {{4.9f, 0.9f}, {4.1f, 3.2f}}, 1);
        sprite.setAnimation("walk");
    }

    // An image of 8 x 8 pixels, each of which tells where it was, and of which image.
    void write(const std::string& name, std::uint8_t blue) {
        Image image = {8, 8, {}};
        for (int i = 0; i < 64; ++i)
            image.pixels.push_back(texel(i % 8, i / 8, blue));
        image.save(folder / name);
    }

    static Pixel texel(int x, int y, std::uint8_t blue = 0) {
        return {static_cast<std::uint8_t>(30 * x + 10), static_cast<std::uint8_t>(30 * y + 10), blue, 255};
    }

    Image drawn(KXPoint at = KXZeroPoint) {
        return picture([&] { sprite.draw(at); });
    }

    /// Which image the sprite is drawn from, by its blue.
    int blueDrawn() {
        const Pixel first = drawn().at(0, 0);
        EXPECT_EQ(first, texel(0, 0, first.b));
        return first.b;
    }

    TemporaryFolder folder;
    KXSprite sprite;
};

TEST_F(SpriteDrawing, TheFrameOnShow) {
    Image image = drawn({10.9f, 5.9f});
    EXPECT_EQ(boxOf(image), (Box{10, 5, 14, 9}));
    EXPECT_EQ(image.at(10, 5), texel(0, 0));
    EXPECT_EQ(image.at(13, 8), texel(3, 3));

    sprite.poll(); // from (4, 0) to (9, 4), of which the image has four columns
    image = drawn({-1.9f, 0});
    EXPECT_EQ(boxOf(image), (Box{0, 0, 3, 4}));
    EXPECT_EQ(image.at(0, 0), texel(5, 0));
    EXPECT_EQ(image.at(2, 3), texel(7, 3));

    sprite.setScale(2);
    sprite.setRotation(180);
    sprite.setAlpha(0.5f);
    image = drawn({20, 20});
    EXPECT_EQ(image.at(20, 20).r, (texel(7, 3).r + 1) / 2);
    EXPECT_EQ(image.at(27, 27).r, texel(4, 0).r / 2);

    sprite.setScale(1);
    sprite.setAlpha(1);
    sprite.setFrameInfo(1, "walk", {{0, 0}, {5, 4}}, 1); // turns about (2, 2), not (2.5, 2)
    image = drawn({20, 20});
    EXPECT_EQ(image.at(19, 20), texel(4, 3));
    EXPECT_EQ(image.at(24, 20), black);
}

TEST_F(SpriteDrawing, ByNamesWithItsBoxes) {
    sprite.addBoundingBox("hit", {{1, 2}, {2, 1}});
    sprite.setScale(2);
    sprite.setAlpha(0.5f);
    sprite.setRotation(-90);
    const KXDrawOptions options = {.flip = KXFlipLeftRight,
                                   .position = {20.75f, 20},
                                   .origin = {1, 0},
                                   .rotation = 90,
                                   .scale = {1.5f, 2}};
    const Image image = picture([&] { sprite.draw(options); });
    EXPECT_EQ(boxOf(image), (Box{18, 20, 30, 36})); // twelve wide from 17.75 on
    EXPECT_EQ(image.at(18, 20).r, texel(3, 0).r / 2) << "mirrored in its place";
    const auto boundsOf = [](const KXPlacedBox& box) {
        return std::array{box.bounds.origin.x, box.bounds.origin.y, box.bounds.size.width,
                          box.bounds.size.height};
    };
    EXPECT_EQ(boundsOf(sprite.placedFrame(options)), (std::array{17.75f, 20.0f, 12.0f, 16.0f}));
    const KXPlacedBox hit = sprite.placedBox("hit", options);
    EXPECT_EQ(boundsOf(hit), (std::array{20.75f, 28.0f, 6.0f, 4.0f}));
    EXPECT_EQ(hit.corners[0].x, 26.75f) << "what was left is right";
    KXDrawOptions part = options;
    part.source = {{2, 1}, {9, 2}};
    EXPECT_EQ(boundsOf(sprite.placedFrame(part)), (std::array{17.75f, 20.0f, 6.0f, 8.0f}));
    EXPECT_EQ(boundsOf(sprite.placedBox("none", options)), (std::array<float, 4>{}));
    KXSprite bare;
    EXPECT_EQ(boundsOf(bare.placedFrame(options)), (std::array<float, 4>{}));
    bare.draw(options);
    sprite.setFrameInfo(0, "walk", {{6, 6}, {NAN, 1e30f}}, 0);
    EXPECT_EQ(boxOf(picture([&] { sprite.draw(options); })), nothing);
}

TEST_F(SpriteDrawing, CopiesAndMovesGoOn) {
    sprite.addBoundingBox("hit", KXZeroRect);
    sprite.setScale(3);
    sprite.poll();
    const Image expected = drawn();
    const auto expectSame = [&](KXSprite& same) {
        EXPECT_EQ(differingPixels(expected, picture([&] { same.draw(KXZeroPoint); })), 0);
        EXPECT_EQ(same.numberOfBoundingBoxes(), 1);
    };
    KXSprite copy(sprite), assigned;
    assigned.addBoundingBox("gone", KXZeroRect);
    assigned = copy;
    copy.removeAnimation("walk");
    copy = *&copy;
    expectSame(assigned);
    expectSame(sprite);
    KXSprite moved;
    EXPECT_EQ(allocationsOf([&] {
                  KXSprite another(std::move(sprite));
                  moved = std::move(another);
              }),
              0U)
        << "or moving could end the program";
    expectSame(moved);
    copy = std::move(moved);
    copy = std::move(*&copy);
    expectSame(copy);
    for (KXSprite* const empty : {&sprite, &moved}) {
        EXPECT_EQ(std::tuple(empty->numberOfFrames(), empty->scale(), empty->currentFrameIndex()),
                  std::tuple(-1, 1.0f, 0));
        empty->poll();
        empty->addAnimation("walk");
    }
}

TEST_F(SpriteDrawing, NothingToDraw) {
    const std::function<void()> changes[] = {
        [&] { sprite.setAnimation(nullptr); },
        [&] { sprite.setAnimation("Walk"); },
        [&] { sprite.setAnimation("walk"), sprite.renameAnimation("walk", "run"); },
        [&] { sprite.setAnimation("run"), sprite.removeAnimation("run"); },
    };
    for (const auto& change : changes) {
        change();
        EXPECT_EQ(boxOf(drawn()), nothing);
    }
    sprite.addFrameInfo("run", {{0, 0}, {4, 4}}, 1);
    EXPECT_EQ(blueDrawn(), 0) << "found when it is added later";
    sprite.setTextureName(nullptr);
    EXPECT_EQ(boxOf(drawn()), nothing);
    sprite.setTextureName("sheet \u00e9.png");
    for (const float value : {NAN, INFINITY, -INFINITY, 1e20f}) {
        sprite.setFrameInfo(0, "run", {{value, -value}, {-value, value}}, 0);
        sprite.draw({value, value});
    }
}

TEST_F(SpriteDrawing, AlwaysWithTheTextureOfThePresent) {
    EXPECT_EQ(blueDrawn(), 0);
    sprite.setTextureName("other.png");
    for (int i = 0; i < 2; ++i)
        EXPECT_THROW(sprite.draw({0, 0}), std::bad_alloc);
    write("other.png", 77);
    EXPECT_EQ(blueDrawn(), 77) << "there by now";
    write("other.png", 99);
    EXPECT_EQ(blueDrawn(), 77) << "cached";
    KXTextureCachePurge();
    EXPECT_EQ(blueDrawn(), 99);
    auto* const sheet = new KXTexture((folder / "sheet \u00e9.png").c_str());
    _KXTextureCacheAdd((folder / "other.png").c_str(), new _KXTextureCacheItem(sheet, window.get()));
    EXPECT_EQ(blueDrawn(), 0) << "another entry of the same path";
    KXTextureCachePurge();

    std::filesystem::create_directory(_KXFilePath(folder / "sub"));
    write("sub/other.png", 55);
    sprite.save((folder / "sub/a.spr").c_str());
    sprite.load((folder / "sub/a.spr").c_str());
    EXPECT_EQ(blueDrawn(), 55) << "from the folder of the sprite file";
    sprite.setTexturePath(folder.path().c_str());
    EXPECT_EQ(blueDrawn(), 99);
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(_KXFilePath(folder / "sub"));
    sprite.load("a.spr");
    EXPECT_EQ(blueDrawn(), 55) << "from the working directory";
    std::filesystem::current_path(previous);
}

TEST_F(SpriteDrawing, FormatsNoTextForEachDraw) {
    const auto allocated = [this] {
        for (int i = 0; i < 1000; ++i) {
            sprite.draw({0, 0});
            glFinish(); // the driver lets go of what it has put by
        }
        return memoryInUse();
    };
    const std::size_t before = allocated(); // the driver has its buffers by then
    EXPECT_LT(allocated(), before + 10'000) << "temporary strings pile up";
}

TEST_F(SpriteDrawing, InEveryWindow) {
    for (int i = 0; i < 3; ++i) {
        const auto other = std::make_unique<KXWindow>("Other", KXSize{64, 48});
        for (KXWindow* each : {window.get(), other.get()}) {
            each->setRenderContext();
            fill({0, 0, 0, 1});
            sprite.draw({0, 0});
            EXPECT_EQ(Image::of(*each).at(0, 0), texel(0, 0));
        }
    }
    window.reset();
    EXPECT_THROW(sprite.draw({0, 0}), std::bad_alloc) << "no window";
    for (int i = 0; i < 2; ++i) {
        window = makeWindow();
        EXPECT_EQ(blueDrawn(), 0);
        window.reset();
        KXDeInit();
        KXInit();
    }
}
} // namespace
