#include "render/KXTextureCache.h"

#include "RenderTest.h"
#include "render/KXTexture.h"

namespace {
struct TextureCache : RenderTest {
    TextureCache() { Image{1, 1, {red}}.save(path); }

    KXTexture* load() { return KXTextureCacheLoad(std::string(path).c_str()); }
    static bool shows(KXTexture* texture, KXWindow& current) {
        fill({0, 0, 0, 1});
        texture->draw(3, 3, -1);
        return boxOf(Image::of(current)) == Box{3, 3, 4, 4};
    }

    TemporaryFolder folder;
    std::string path = folder / "a.png";
};

TEST_F(TextureCache, LoadsEachPathOnce) {
    KXTexture* texture = load();
    EXPECT_EQ(load(), texture);
    EXPECT_NE(KXTextureCacheLoad((folder.path() + "/./a.png").c_str()), texture);
    EXPECT_EQ(_KXTextureCacheGet(path.c_str())->renderContext(), window.get());

    EXPECT_THROW(KXTextureCacheLoad("missing.png"), std::bad_alloc);
    EXPECT_THROW(KXTextureCacheLoad(nullptr), std::bad_alloc);
    EXPECT_EQ(_KXTextureCacheGet("missing.png"), nullptr);
    KXTextureCachePurge();
    EXPECT_EQ(_KXTextureCacheGet(path.c_str()), nullptr);
    KXTextureCachePurge(); // an empty cache
    EXPECT_TRUE(shows(load(), *window));
}

TEST_F(TextureCache, KeepsWindowsApart) {
    window.reset();
    window = std::make_unique<KXWindow>("Fresh", KXSize{64, 48});
    KXTexture* const first = load();
    EXPECT_EQ(_KXTextureCacheGet(path.c_str())->renderContext(), nullptr);
    window->setRenderContext();
    EXPECT_EQ(load(), first) << "loaded for the only window there was";
    KXWindow other("Other", {32, 32});
    EXPECT_EQ(load(), first) << "the new window is not the current one yet";
    other.setRenderContext();
    KXTexture* const second = load();
    EXPECT_NE(second, first);
    for (int i = 0; i < 2; ++i) { // going back and forth loads nothing again
        window->setRenderContext();
        EXPECT_TRUE(load() == first && shows(first, *window));
        other.setRenderContext();
        EXPECT_TRUE(load() == second && shows(second, other) && !shows(first, other));
    }
}

TEST_F(TextureCache, NeverHandsOutTexturesOfAClosedWindow) {
    for (int i = 0; i < 5; ++i) { // a new window may well get the address of the one before
        EXPECT_TRUE(shows(load(), *window));
        window.reset();
        window = makeWindow();
    }
}
} // namespace
