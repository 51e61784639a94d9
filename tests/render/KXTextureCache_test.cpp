#include "render/KXTextureCache.h"

#include "render/KXTexture.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"

#include <new>

namespace {
struct TextureCache : WindowTest {
    TextureCache() {
        Image image = {1, 1, {{10, 20, 30, 255}}};
        path = folder / "a.png";
        image.save(path);
    }

    TemporaryFolder folder;
    std::string path;
};

TEST_F(TextureCache, LoadsEachPathOnce) {
    KXTexture* texture = KXTextureCacheLoad(path.c_str());
    EXPECT_EQ(KXTextureCacheLoad(std::string(path).c_str()), texture);
    const std::string samePlace = folder.path() + "/./a.png";
    EXPECT_NE(KXTextureCacheLoad(samePlace.c_str()), texture);
    EXPECT_EQ(_KXTextureCacheGet(path.c_str())->texture(), texture);
    EXPECT_EQ(_KXTextureCacheGet(path.c_str())->renderContext(), window.get());
    EXPECT_EQ(_KXTextureCacheGet("other"), nullptr);

    EXPECT_THROW(KXTextureCacheLoad((folder / "missing.png").c_str()), std::bad_alloc);
    EXPECT_THROW(KXTextureCacheLoad(nullptr), std::bad_alloc);
    EXPECT_EQ(_KXTextureCacheGet((folder / "missing.png").c_str()), nullptr);

    KXTextureCachePurge();
    EXPECT_EQ(_KXTextureCacheGet(path.c_str()), nullptr);
    KXTextureCachePurge(); // an empty cache
    EXPECT_NE(KXTextureCacheLoad(path.c_str()), nullptr);
}

TEST_F(TextureCache, KeepsWindowsApart) {
    KXTexture* first = KXTextureCacheLoad(path.c_str());
    KXWindow other("Other", {32, 32});
    EXPECT_EQ(KXTextureCacheLoad(path.c_str()), first) << "the new window is not the current one yet";
    other.setRenderContext();
    KXTexture* second = KXTextureCacheLoad(path.c_str());
    EXPECT_NE(second, first);
    fill({0, 0, 0, 1});
    second->draw(0, 0, -1);
    EXPECT_EQ(Image::of(other).at(0, 0).g, 20);

    // Going back and forth loads nothing again, and the first texture still draws in its own window.
    window->setRenderContext();
    EXPECT_EQ(KXTextureCacheLoad(path.c_str()), first);
    first->draw(3, 3, -1);
    EXPECT_EQ(Image::of(*window).at(3, 3).b, 30);
    other.setRenderContext();
    EXPECT_EQ(KXTextureCacheLoad(path.c_str()), second);
    first->draw(5, 5, -1);
    EXPECT_EQ(Image::of(other).at(5, 5).g, 0) << "another window's texture draws nothing";
}

TEST_F(TextureCache, LoadsOnceAroundTheFirstTarget) {
    window.reset();
    KXWindow fresh("Fresh", {64, 48});
    KXTexture* const early = KXTextureCacheLoad(path.c_str());
    EXPECT_EQ(_KXTextureCacheGet(path.c_str())->renderContext(), nullptr);
    KXWindow other("Other", {32, 32});
    fresh.setRenderContext();
    EXPECT_EQ(KXTextureCacheLoad(path.c_str()), early);
    other.setRenderContext();
    EXPECT_NE(KXTextureCacheLoad(path.c_str()), early);
}

TEST_F(TextureCache, NeverHandsOutTexturesOfAClosedWindow) {
    KXTextureCacheLoad(path.c_str());
    for (int i = 0; i < 5; ++i) { // a new window may well get the address of the one before
        window.reset();
        window = std::make_unique<KXWindow>("Again", KXSize{64, 48});
        window->setRenderContext();
        fill({0, 0, 0, 1});
        KXTextureCacheLoad(path.c_str())->draw(0, 0, -1);
        EXPECT_EQ(Image::of(*window).at(0, 0).g, 20);
    }
}
} // namespace
