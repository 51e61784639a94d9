#include "text/KXUIGlobalFont.h"

#include "text/FontCache.h"
#include "text/TextTest.h"

#include <cmath>
#include <string>

namespace {
constexpr KXColor white = {1, 1, 1, 1};

struct UIGlobalFont : TextTest {
    void expectNoFont() {
        const KXSize bounds = KXUIGlobalFontStringBounds("text");
        EXPECT_EQ(bounds.width + bounds.height, 0);
        EXPECT_EQ(KXUIGlobalFontLineHeight(), 0);
        EXPECT_EQ(KXUIGlobalFontDescender(), 0);
        EXPECT_EQ(KXUIGlobalFontRenderingOffset().x, 0);
        EXPECT_EQ(ink([] { KXUIGlobalFontPrint({5, 5}, white, "text"); }), Ink());
    }
    void expectNoFontOfAnySize() {
        expectNoFont();
        const KXSize bounds = KXUIGlobalFontStringBounds(12, "text");
        EXPECT_EQ(bounds.width + bounds.height, 0);
        EXPECT_EQ(KXUIGlobalFontLineHeight(12), 0);
        EXPECT_EQ(KXUIGlobalFontDescender(12), 0);
        EXPECT_EQ(KXUIGlobalFontRenderingOffset(12).x, 0);
        EXPECT_EQ(ink([] { KXUIGlobalFontPrint({5, 5}, white, 12, "text"); }), Ink());
        EXPECT_EQ(KXGUIFontCacheSize(), 0);
    }
};

TEST_F(UIGlobalFont, NothingWithoutAFont) {
    expectNoFontOfAnySize();
    EXPECT_EQ(KXUISetGlobalFont(nullptr, KXAliasModeTexture, 12, {1, 1}), -1);
    expectNoFontOfAnySize();
    EXPECT_EQ(KXUISetGlobalFont("/no/such/font.ttf", KXAliasModeTexture, 12, {1, 1}), -1);
    EXPECT_STREQ(KXError(), "Unable to set font face size");
    expectNoFont();
    _KXDestroyGlobalFontCache();
    EXPECT_EQ(KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, {1, 1}), -1);
    expectNoFontOfAnySize();
}

TEST_F(UIGlobalFont, MeasuresAreRoundedUp) {
    ASSERT_EQ(KXUISetGlobalFont(testFont(), KXAliasModeTexture, 13, {2, 3}), -1);
    KXFont* const font = _KXUIGlobalFont;
    ASSERT_NE(font, nullptr);
    const char* text = "{C1,0,0,1}Text{EC} gj";
    const KXSize bounds = font->stringBounds("Text gj", 1);
    ASSERT_NE(bounds.width, std::floor(bounds.width));
    for (const KXSize size : {KXUIGlobalFontStringBounds(text), KXUIGlobalFontStringBounds(13, text)}) {
        EXPECT_EQ(size.width, std::ceil(bounds.width));
        EXPECT_EQ(size.height, std::ceil(bounds.height));
    }
    ASSERT_NE(font->lineHeight(), std::floor(font->lineHeight()));
    for (const int height : {KXUIGlobalFontLineHeight(), KXUIGlobalFontLineHeight(13)})
        EXPECT_EQ(height, static_cast<int>(font->lineHeight()) + 1);
    ASSERT_LT(font->descender(), -1);
    for (const int descender : {KXUIGlobalFontDescender(), KXUIGlobalFontDescender(13)})
        EXPECT_EQ(descender, static_cast<int>(std::ceil(font->descender())));
    EXPECT_EQ(KXUIGlobalFontStringBounds(nullptr).width, 0);
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
    EXPECT_EQ(ink([&] { KXUIGlobalFontPrint({x, 4}, white, text.c_str()); }), Ink());
    KXUIGlobalFontPrint({4, 4}, white, nullptr);
    _KXUIGlobalFontPrint(nullptr, {4, 4}, white, "text");
}

TEST_F(UIGlobalFont, ClearingTheCacheForgetsTheFont) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, {1, 2});
    KXClearGUIFontCache();
    EXPECT_EQ(_KXUIGlobalFont, nullptr);
    expectNoFont();
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
