#include "text/FontCache.h"

#include "core/ground/ErrorSlot.h"
#include "text/ScarceMemory.h"
#include "text/TextTest.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <new>

namespace {
struct Cache : TextTest {
    static KXFont* get(const char* path, int mode, int size) {
        return _KXGlobalFontCache->fontAtPath(path, static_cast<KXAliasMode>(mode), size);
    }
};

TEST_F(Cache, OneFontForEachQuadruple) {
    const std::string relative = std::filesystem::relative(testFont()), samePath = testFont();
    const auto second = makeWindow();
    KXFont* const inSecond = get(testFont(), 2, 12);
    window->setRenderContext();
    KXFont* const fonts[] = {inSecond,
                             get(testFont(), 2, 12),
                             get(testFont(), 2, 14),
                             get(testFont(), 0, 12), // found as asked for, though drawn as 2
                             get(testFont(), 1, 12),
                             get(relative.c_str(), 2, 12)};
    for (KXFont* const& font : fonts) {
        ASSERT_NE(font, nullptr);
        EXPECT_EQ(std::count(std::begin(fonts), std::end(fonts), font), 1);
    }
    EXPECT_EQ(fonts[2]->getSize(), 14);
    EXPECT_EQ(get(samePath.c_str(), 2, 12), fonts[1]);
    EXPECT_EQ(get(samePath.c_str(), 0, 12), fonts[3]);
    second->setRenderContext();
    EXPECT_EQ(get(testFont(), 2, 12), inSecond);
    EXPECT_EQ(KXGUIFontCacheSize(), 6);

    KXClearGUIFontCache();
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    EXPECT_NE(get(testFont(), 2, 12), nullptr);
    _KXCreateGlobalFontCache(); // takes the place of the one there is
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    for (int i = 0; i < 2; ++i) {
        _KXDestroyGlobalFontCache();
        EXPECT_EQ(KXGUIFontCacheSize(), 0);
        KXClearGUIFontCache();
    }
}

TEST_F(Cache, WhatCannotBeLoadedIsCachedToo) {
    const struct {
        const char* path;
        int size, sizeInUse;
    } cases[] = {{"/no/such/font.ttf", 12, 0}, {nullptr, 12, 0}, {testFont(), -3, 10}};
    int count = 0;
    for (const auto& c : cases) {
        _KXClearError();
        KXFont* const font = get(c.path, 2, c.size);
        ASSERT_NE(font, nullptr);
        EXPECT_STREQ(KXError(), "Unable to set font face size");
        EXPECT_EQ(font->getSize(), c.sizeInUse);
        EXPECT_EQ(get(c.path, 2, c.size), font);
        EXPECT_EQ(KXGUIFontCacheSize(), ++count);
    }
}

TEST_F(Cache, ExhaustedMemoryIsReported) {
    const char* const path = testFont();
    KXFont* const other = get(path, 2, 11);
    // A path longer than a string keeps inside: its copy, the item and the font object are the first blocks.
    for (long successful = 0; successful < 4; ++successful) {
        _KXClearError();
        allocationsLeft = successful;
        KXFont* const font = get(path, 2, 12);
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
    EXPECT_EQ(get(path, 2, 11), other);
    EXPECT_THROW(_KXFontCacheItem(), std::bad_alloc);
    EXPECT_STREQ(KXError(), "Cannot instantiate default _KXFontCacheItem");
}
} // namespace
