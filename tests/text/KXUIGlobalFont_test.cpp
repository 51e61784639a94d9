#include "text/KXUIGlobalFont.h"

#include "text/FontCache.h"
#include "text/TextTest.h"

#include <array>
#include <cmath>
#include <string>

namespace {
struct UIGlobalFont : TextTest {
    // Width, height, line height, descender, offset and pixels of a text in the font in use or of a size.
    using Measures = std::array<float, 6>;
    Measures inUse(const char* text = "text") {
        const KXSize bounds = KXUIGlobalFontStringBounds(text);
        return measures(bounds, KXUIGlobalFontLineHeight(), KXUIGlobalFontDescender(),
                        KXUIGlobalFontRenderingOffset(), [&] {
                            KXUIGlobalFontPrint({5, 5}, white, text);
                        });
    }
    Measures ofSize(int size, const char* text = "text") {
        const KXSize bounds = KXUIGlobalFontStringBounds(size, text);
        return measures(bounds, KXUIGlobalFontLineHeight(size), KXUIGlobalFontDescender(size),
                        KXUIGlobalFontRenderingOffset(size), [&] {
                            KXUIGlobalFontPrint({5, 5}, white, size, text);
                        });
    }
    Measures measures(KXSize bounds, int lineHeight, int descender, KXPoint offset,
                      const std::function<void()>& print) {
        return {bounds.width,
                bounds.height,
                static_cast<float>(lineHeight),
                static_cast<float>(descender),
                offset.x,
                static_cast<float>(drawnPixels(print))};
    }
};

TEST_F(UIGlobalFont, NothingWithoutAFont) {
    const auto set = [](const char* path) {
        EXPECT_EQ(KXUISetGlobalFont(path, KXAliasModeTexture, 12, {1, 1}), -1);
    };
    const auto expectNoFont = [this] {
        EXPECT_EQ(inUse(), Measures());
        EXPECT_EQ(ofSize(12), Measures());
        EXPECT_EQ(KXGUIFontCacheSize(), 0);
    };
    expectNoFont();
    set(nullptr);
    expectNoFont();
    set("/no/such/font.ttf");
    EXPECT_STREQ(KXError(), "Unable to set font face size");
    EXPECT_EQ(inUse(), Measures());
    _KXDestroyGlobalFontCache();
    set(testFont());
    expectNoFont();
}

TEST_F(UIGlobalFont, MeasuresAreRoundedUp) {
    ASSERT_EQ(KXUISetGlobalFont(testFont(), KXAliasModeTexture, 13, {2, 3}), -1);
    KXFont* const font = _KXUIGlobalFont;
    ASSERT_NE(font, nullptr);
    const char* text = "{C1,0,0,1}Text{EC} gj";
    const KXSize bounds = font->stringBounds("Text gj", 1);
    ASSERT_NE(bounds.width, std::floor(bounds.width));
    ASSERT_NE(font->lineHeight(), std::floor(font->lineHeight()));
    ASSERT_LT(font->descender(), -1);
    const auto pixels = static_cast<float>(drawnPixels([&] { font->print({5, 5}, white, "%s", text); }));
    const Measures expected = {std::ceil(bounds.width),
                               std::ceil(bounds.height),
                               std::floor(font->lineHeight()) + 1,
                               std::ceil(font->descender()),
                               2,
                               pixels};
    EXPECT_EQ(inUse(text), expected);
    EXPECT_EQ(ofSize(13, text), expected);
    EXPECT_GT(pixels, 0);
    EXPECT_EQ(inUse(nullptr)[0], 0);
    EXPECT_GT(KXUIGlobalFontLineHeight(40), KXUIGlobalFontLineHeight());
}

TEST_F(UIGlobalFont, OneOffsetForEverySize) {
    KXUISetGlobalFont(testFont(), KXAliasModePolygon, 12, {2, 3});
    KXFont* const other = _KXUIGlobalFontWithSize(18);
    EXPECT_EQ(_KXUIGlobalFontWithSize(12), _KXUIGlobalFont);
    EXPECT_EQ(KXGUIFontCacheSize(), 2);
    EXPECT_EQ(KXUIGlobalFontRenderingOffset().x, 2);
    EXPECT_EQ(_KXUIGlobalFontRenderingOffset(other).y, 3);
    other->setRenderingOffsetForSize(18, {9, 9}); // lasts until the size is asked for again
    EXPECT_EQ(KXUIGlobalFontRenderingOffset(18).x, 2);

    // Its own path serves as the argument as well as any.
    KXUISetGlobalFont(_KXUIGlobalFontPath, KXAliasModeTexture, 18, {-4, 0});
    EXPECT_EQ(KXUIGlobalFontRenderingOffset().x, -4);
    EXPECT_EQ(other->renderingOffsetForSize(18).x, 2); // a font of before keeps what it has
    EXPECT_EQ(_KXUIGlobalFont->_aliasModeInUse(), KXAliasModeTexture);
}

TEST_F(UIGlobalFont, TextIsAFormatWithoutArguments) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, {1, 2});
    KXFont* const font = _KXUIGlobalFont;
    const struct {
        std::string text, printed;
    } cases[] = {{"50% and 50%% more", "50% and 50% more"},
                 {"%s%n%d", "%s%n%d"},
                 {"{C1,0,0,1}100%%{EC} %", "{C1,0,0,1}100%{EC} %"},
                 {"x%%%%", "x%%"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const Image expected = draw([&] { font->print({4, 4}, white, "%s", c.printed.c_str()); });
        const auto drawn = {draw([&] {
                                KXUIGlobalFontPrint({4, 4}, white, c.text.c_str());
                            }),
                            draw([&] {
                                KXUIGlobalFontPrint({4, 4}, white, 14, c.text.c_str());
                            })};
        for (const Image& image : drawn)
            EXPECT_EQ(differingPixels(image, expected), 0);
    }
    // A cut character at the end leaves nothing behind.
    const std::string blanks(1022, ' '), text = blanks + "\xC3\xA4";
    const float x = 9 - font->advance(blanks.c_str());
    EXPECT_EQ(drawnPixels([&] { KXUIGlobalFontPrint({x, 4}, white, text.c_str()); }), 0);
    _KXUIGlobalFontPrint(nullptr, {4, 4}, white, "text");
}

TEST_F(UIGlobalFont, ClearingTheCacheForgetsTheFont) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, {1, 2});
    KXClearGUIFontCache();
    EXPECT_EQ(_KXUIGlobalFont, nullptr);
    EXPECT_EQ(inUse(), Measures());
    EXPECT_GT(KXUIGlobalFontLineHeight(14), 0); // other sizes are fetched when they are asked for
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, {1, 2});
    _KXFontCache another;
    another.fontAtPath(testFont(), KXAliasModeTexture, 14);
    another.clear();
    EXPECT_GT(KXUIGlobalFontLineHeight(), 0);
    _KXDestroyGlobalFontCache();
    EXPECT_EQ(_KXUIGlobalFont, nullptr);
    _KXUIForgetGlobalFont();
    EXPECT_EQ(_KXUIGlobalFontPath, nullptr);
}
} // namespace
