#include "text/FontCache.h"

#include "support/Allocations.h"
#include "text/TextTest.h"

#include <set>
#include <tuple>

namespace {
struct Cache : TextTest {
    static KXFont* get(const char* path, int mode, int size) {
        return _KXGlobalFontCache->fontAtPath(path, static_cast<KXAliasMode>(mode), size);
    }
};

TEST_F(Cache, OneFontForEachQuadruple) {
    const std::string path = testFont(), relative = std::filesystem::relative(path).string();
    const auto second = makeWindow();
    KXFont* const inSecond = get(testFont(), 2, 12);
    window->setRenderContext();
    std::set<KXFont*> fonts = {nullptr, inSecond};
    for (const bool anew : {true, false}) // a mode of 0 is found as asked for, though drawn as 2
        for (const auto& [file, mode, size] :
             {std::tuple{path, 2, 12}, {path, 2, 14}, {path, 0, 12}, {path, 1, 12}, {relative, 2, 12}})
            EXPECT_EQ(fonts.insert(get(file.c_str(), mode, size)).second, anew) << file << mode << size;
    EXPECT_EQ(get(testFont(), 2, 14)->getSize(), 14);
    second->setRenderContext();
    EXPECT_EQ(get(testFont(), 2, 12), inSecond);
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
    // A path longer than a string keeps inside: its copy, the item and the font object are the first blocks.
    for (const long successful : {0, 1, 2, 3}) {
        _KXClearError();
        allocationsLeft = successful;
        KXFont* const font = get("/usr/share/fonts/none.ttf", 2, 12);
        allocationsLeft = -1;
        EXPECT_EQ(font, nullptr);
        EXPECT_STREQ(KXError(), "Unable to load font and add it to the global cache.");
    }
    allocationsLeft = 1;
    EXPECT_THROW(_KXFontCacheItem("/usr/share/fonts/none.ttf", KXAliasModeTexture, 12, nullptr),
                 std::bad_alloc);
    allocationsLeft = 0;
    EXPECT_THROW(_KXCreateGlobalFontCache(), std::bad_alloc);
    allocationsLeft = -1;
    EXPECT_STREQ(KXError(), "Unable to load font at path:");
    EXPECT_THROW(_KXFontCacheItem(), std::bad_alloc);
    EXPECT_STREQ(KXError(), "Cannot instantiate default _KXFontCacheItem");
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
}
} // namespace
