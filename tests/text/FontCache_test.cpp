#include "text/FontCache.h"

#include "core/ground/ErrorSlot.h"
#include "support/Allocations.h"
#include "text/TextTest.h"

#include <filesystem>
#include <new>
#include <set>

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
    KXFont* const asZero = get(testFont(), 0, 12); // found as asked for, though drawn as 2
    const std::set<KXFont*> fonts = {nullptr,
                                     inSecond,
                                     asZero,
                                     get(testFont(), 2, 12),
                                     get(testFont(), 2, 14),
                                     get(testFont(), 1, 12),
                                     get(relative.c_str(), 2, 12)};
    EXPECT_EQ(fonts.size(), 7u);
    EXPECT_EQ(get(testFont(), 2, 14)->getSize(), 14);
    EXPECT_EQ(get(samePath.c_str(), 0, 12), asZero);
    second->setRenderContext();
    EXPECT_EQ(get(samePath.c_str(), 2, 12), inSecond);
    EXPECT_EQ(KXGUIFontCacheSize(), 6);
}

TEST_F(Cache, IsClearedReplacedAndDestroyed) {
    for (void (*const empty)() : {KXClearGUIFontCache, _KXCreateGlobalFontCache, _KXDestroyGlobalFontCache}) {
        KXFont* const font = _KXUIGlobalFont = get(testFont(), 2, 12);
        const unsigned generation = _KXGlobalFontGeneration;
        _KXFontCache().clear(); // another cache has other fonts
        EXPECT_EQ(_KXGlobalFontGeneration, generation);
        EXPECT_EQ(_KXUIGlobalFont, font);
        EXPECT_EQ(KXGUIFontCacheSize(), 1);
        for (int i = 0; i < 2; ++i)
            empty();
        EXPECT_EQ(KXGUIFontCacheSize(), 0);
        EXPECT_NE(_KXGlobalFontGeneration, generation);
        EXPECT_EQ(_KXUIGlobalFont, nullptr);
    }
    KXClearGUIFontCache();
}

TEST_F(Cache, WhatCannotBeLoadedIsCachedToo) {
    for (const auto& [path, size, sizeInUse] :
         {std::tuple{"/no/such/font.ttf", 12, 0}, {nullptr, 12, 0}, {testFont(), -3, 10}}) {
        _KXClearError();
        KXFont* const font = get(path, 2, size);
        EXPECT_STREQ(KXError(), "Unable to set font face size");
        EXPECT_EQ(font->getSize(), sizeInUse);
        EXPECT_EQ(get(path, 2, size), font);
    }
    EXPECT_EQ(KXGUIFontCacheSize(), 3);
}

TEST_F(Cache, ExhaustedMemoryIsReported) {
    const auto expectReport = [](long successful, const char* report, const std::function<void()>& work) {
        _KXClearError();
        allocationsLeft = successful;
        work();
        allocationsLeft = -1;
        EXPECT_STREQ(KXError(), report) << successful;
    };
    const char* const path = testFont();
    // A path longer than a string keeps inside: its copy, the item and the font object are the first blocks.
    for (const long successful : {0, 1, 2, 3})
        expectReport(successful, "Unable to load font and add it to the global cache.",
                     [&] { EXPECT_EQ(get(path, 2, 12), nullptr); });
    expectReport(1, "Unable to load font at path:", [&] {
        EXPECT_THROW(_KXFontCacheItem(path, KXAliasModeTexture, 12, nullptr), std::bad_alloc);
    });
    expectReport(0, "", [] { EXPECT_THROW(_KXCreateGlobalFontCache(), std::bad_alloc); });
    expectReport(-1, "Cannot instantiate default _KXFontCacheItem",
                 [] { EXPECT_THROW(_KXFontCacheItem(), std::bad_alloc); });
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
}
} // namespace
