#include "text/FontCache.h"

#include "core/ErrorSlot.h"
#include "render/RenderContext.h"
#include "text/ScarceMemory.h"
#include "text/TextWindow.h"

#include <Kobaltrix/KXCore.h>

#include <filesystem>
#include <new>

namespace {
struct Context final : KXRenderContext {};

struct Cache : TextTest {
    Cache() {
        _KXCreateGlobalFontCache();
        _KXCurrentWindowRenderContext = &first;
    }
    ~Cache() override {
        _KXDestroyGlobalFontCache();
        _KXCurrentWindowRenderContext = nullptr;
    }
    Context first, second;
};

TEST_F(Cache, OneFontForEachQuadruple) {
    const auto get = [](const char* path, int mode, int size) {
        return _KXGlobalFontCache->fontAtPath(path, static_cast<KXAliasMode>(mode), size);
    };
    const std::string relative = std::filesystem::relative(testFont());
    KXFont* const font = get(testFont(), 2, 12);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->getSize(), 12);
    const struct {
        const char* what;
        KXFont* font;
    } others[] = {{"size", get(testFont(), 2, 14)},
                  {"mode as asked for", get(testFont(), 0, 12)},
                  {"polygons", get(testFont(), 1, 12)},
                  {"spelling of the path", get(relative.c_str(), 2, 12)},
                  {"context", (_KXCurrentWindowRenderContext = &second, get(testFont(), 2, 12))}};
    for (const auto& other : others)
        EXPECT_TRUE(other.font && other.font != font) << other.what;
    EXPECT_EQ(KXGUIFontCacheSize(), 6);
    EXPECT_EQ(get(testFont(), 2, 12), others[4].font);
    _KXCurrentWindowRenderContext = &first;
    const std::string samePath = testFont();
    EXPECT_EQ(get(samePath.c_str(), 2, 12), font);
    EXPECT_EQ(get(samePath.c_str(), 0, 12), others[1].font);
    EXPECT_EQ(KXGUIFontCacheSize(), 6);

    KXClearGUIFontCache();
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    EXPECT_NE(get(testFont(), 2, 12), nullptr);
    EXPECT_EQ(KXGUIFontCacheSize(), 1);
}

TEST_F(Cache, WhatCannotBeLoadedIsCachedToo) {
    const struct {
        const char* path;
        int size, sizeInUse;
    } cases[] = {{"/no/such/font.ttf", 12, 0}, {nullptr, 12, 0}, {testFont(), -3, 10}};
    int count = 0;
    for (const auto& c : cases) {
        _KXClearError();
        KXFont* const font = _KXGlobalFontCache->fontAtPath(c.path, KXAliasModeTexture, c.size);
        ASSERT_NE(font, nullptr);
        EXPECT_STREQ(KXError(), "Unable to set font face size");
        EXPECT_EQ(font->getSize(), c.sizeInUse);
        EXPECT_EQ(_KXGlobalFontCache->fontAtPath(c.path, KXAliasModeTexture, c.size), font);
        EXPECT_EQ(KXGUIFontCacheSize(), ++count);
    }
}

TEST_F(Cache, ItemsRememberWhatWasAskedFor) {
    const _KXFontCacheItem item(testFont(), static_cast<KXAliasMode>(7), 13, &second);
    EXPECT_STREQ(item.path(), testFont());
    EXPECT_EQ(int{item.mode()}, 7);
    EXPECT_EQ(item.size(), 13);
    EXPECT_EQ(item.context(), &second);
    EXPECT_EQ(item.font()->getSize(), 13);
    EXPECT_THROW(_KXFontCacheItem(), std::bad_alloc);
    EXPECT_STREQ(KXError(), "Cannot instantiate default _KXFontCacheItem");
}

TEST_F(Cache, ExhaustedMemoryIsReported) {
    KXFont* const other = _KXGlobalFontCache->fontAtPath(testFont(), KXAliasModeTexture, 11);
    const char* const path = testFont();
    // A path longer than a string keeps inside: its copy, the item and the font object are the first blocks.
    for (long successful = 0; successful < 4; ++successful) {
        _KXClearError();
        allocationsLeft = successful;
        KXFont* const font = _KXGlobalFontCache->fontAtPath(path, KXAliasModeTexture, 12);
        allocationsLeft = -1;
        EXPECT_EQ(font, nullptr) << successful;
        EXPECT_STREQ(KXError(), "Unable to load font and add it to the global cache.");
        EXPECT_EQ(KXGUIFontCacheSize(), 1);
    }
    allocationsLeft = 1;
    EXPECT_THROW(_KXFontCacheItem(path, KXAliasModeTexture, 12, nullptr), std::bad_alloc);
    allocationsLeft = 0;
    EXPECT_THROW(_KXCreateGlobalFontCache(), std::bad_alloc);
    allocationsLeft = -1;
    EXPECT_STREQ(KXError(), "Unable to load font at path:");
    EXPECT_EQ(_KXGlobalFontCache->fontAtPath(path, KXAliasModeTexture, 11), other);
}

TEST_F(Cache, WithoutTheGlobalOne) {
    _KXGlobalFontCache->fontAtPath(testFont(), KXAliasModeTexture, 12);
    _KXCreateGlobalFontCache(); // takes the place of the one there is
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    _KXDestroyGlobalFontCache();
    _KXDestroyGlobalFontCache();
    EXPECT_EQ(_KXGlobalFontCache, nullptr);
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    KXClearGUIFontCache();
}
} // namespace
