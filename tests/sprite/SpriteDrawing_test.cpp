#include <Kobaltrix/KXSprite.h>

#include "render/KXTexture.h"
#include "render/KXTextureCache.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"

#include <unistd.h>

#include <SDL_opengl.h>
#include <climits>
#include <cmath>
#include <cstddef>

#include <filesystem>
#include <limits>
#include <new>

#ifdef KOBALTRIX_SANITIZE
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {
constexpr Pixel black = {0, 0, 0, 255}, white = {255, 255, 255, 255};

struct SpriteDrawing : WindowTest {
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

    Image drawn(KXPoint at) {
        fill({0, 0, 0, 1});
        sprite.draw(at);
        return Image::of(*window);
    }

    TemporaryFolder folder;
    KXSprite sprite;
};

TEST_F(SpriteDrawing, TheFrameOnShow) {
    Image image = drawn({10.9f, 5.9f});
    EXPECT_EQ(image.at(10, 5), texel(0, 0));
    EXPECT_EQ(image.at(13, 8), texel(3, 3));
    EXPECT_EQ(image.at(14, 8), black);
    EXPECT_EQ(image.at(13, 9), black);

    sprite.poll(); // from (4, 0) to (9, 4), of which the image has four columns
    image = drawn({-1.9f, 0});
    EXPECT_EQ(image.at(0, 0), texel(5, 0));
    EXPECT_EQ(image.at(2, 3), texel(7, 3));
    EXPECT_EQ(image.at(2, 4), black);
    EXPECT_EQ(image.at(3, 3), black);

    sprite.setScale(2);
    sprite.setRotation(180);
    sprite.setAlpha(0.5f);
    image = drawn({20, 20});
    EXPECT_EQ(image.at(20, 20).r, (texel(7, 3).r + 1) / 2);
    EXPECT_EQ(image.at(27, 27).r, texel(4, 0).r / 2);
}

TEST_F(SpriteDrawing, NothingToDraw) {
    const float huge = std::numeric_limits<float>::infinity();
    const struct {
        const char* name;
        void (*change)(KXSprite&);
        bool draws;
    } cases[] = {
        {"as it is", [](KXSprite&) {}, true},
        {"no animation set", [](KXSprite& one) { one.setAnimation(nullptr); }, false},
        {"an unknown one", [](KXSprite& one) { one.setAnimation("Walk"); }, false},
        {"removed", [](KXSprite& one) { one.removeAnimation("walk"); }, false},
        {"renamed", [](KXSprite& one) { one.renameAnimation("walk", "run"); }, false},
        {"added later",
         [](KXSprite& one) {
             one.removeAnimation("walk");
             one.addFrameInfo("walk", {{0, 0}, {4, 4}}, 1);
         },
         true},
        {"no texture", [](KXSprite& one) { one.setTextureName(nullptr); }, false},
    };
    for (const auto& one : cases) {
        const std::unique_ptr<KXSprite> changed(sprite.clone());
        changed->setAnimation("walk");
        one.change(*changed);
        fill({1, 1, 1, 1});
        changed->draw({0, 0});
        EXPECT_EQ(Image::of(*window).at(0, 0), one.draws ? texel(0, 0) : white) << one.name;
    }
    for (const float value : {NAN, huge, -huge, 1e20f})
        for (const float extent : {NAN, huge, -huge}) {
            sprite.setFrameInfo(0, "walk", {{value, -value}, {extent, value}}, 0);
            sprite.draw({value, extent});
        }
    sprite.setTextureName("missing.png");
    EXPECT_THROW(sprite.draw({0, 0}), std::bad_alloc);
    EXPECT_THROW(sprite.draw({0, 0}), std::bad_alloc);
    write("missing.png", 9);
    sprite.setFrameInfo(0, "walk", {{0, 0}, {4, 4}}, 0);
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 9)) << "there by now";
}

TEST_F(SpriteDrawing, AlwaysWithTheTextureOfThePresent) {
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0));
    write("other.png", 77);
    sprite.setTextureName("other.png");
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 77));

    write("other.png", 99);
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 77)) << "cached";
    KXTextureCachePurge();
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 99));
    const std::string path = folder / "other.png";
    auto* const sheet = new KXTexture((folder / "sheet \u00e9.png").c_str());
    _KXTextureCacheAdd(path.c_str(), new _KXTextureCacheItem(sheet, window.get()));
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0)) << "another entry of the same path";
    KXTextureCachePurge();

    std::filesystem::create_directory(folder / "sub");
    write("sub/other.png", 55);
    sprite.setTexturePath((folder / "sub/").c_str());
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 55));
    sprite.save((folder / "a.spr").c_str());
    sprite.load((folder / "a.spr").c_str());
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 99)) << "from the folder of the sprite file";

    const auto previous = std::filesystem::current_path();
    ASSERT_EQ(chdir((folder / "sub").c_str()), 0);
    std::filesystem::copy(folder / "a.spr", "a.spr");
    sprite.load("a.spr");
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0, 55)) << "from the working directory";
    std::filesystem::current_path(previous);
}

#ifdef KOBALTRIX_SANITIZE
TEST_F(SpriteDrawing, FormatsNoTextForEachDraw) {
    std::size_t before = 0;
    for (int i = 0; i < 2000; ++i) {
        if (i == 1000) // the driver has its buffers by then
            before = __sanitizer_get_current_allocated_bytes();
        sprite.draw({0, 0});
        if (i % 100 == 99)
            glFinish(); // and lets go of what it has put by
    }
    EXPECT_LT(__sanitizer_get_current_allocated_bytes(), before + 10'000) << "temporary strings pile up";
}
#endif

TEST_F(SpriteDrawing, InEveryWindow) {
    drawn({0, 0});
    auto other = std::make_unique<KXWindow>("Other", KXSize{64, 48});
    for (int i = 0; i < 3; ++i)
        for (KXWindow* each : {window.get(), other.get()}) {
            each->setRenderContext();
            fill({0, 0, 0, 1});
            sprite.draw({0, 0});
            EXPECT_EQ(Image::of(*each).at(0, 0), texel(0, 0));
        }
    other.reset(); // the sprite was drawn there last
    for (int i = 0; i < 3; ++i) {
        window.reset();
        EXPECT_THROW(sprite.draw({0, 0}), std::bad_alloc) << "no window";
        window = std::make_unique<KXWindow>("Again", KXSize{64, 48});
        window->setRenderContext();
        EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0));
    }
    KXDeInit();
    KXInit();
    window = std::make_unique<KXWindow>("Restarted", KXSize{64, 48});
    window->setRenderContext();
    EXPECT_EQ(drawn({0, 0}).at(0, 0), texel(0, 0));
}
} // namespace
