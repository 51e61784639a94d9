#include "text/KXUIGlobalFont.h"

#include "text/TextTest.h"

#include <tuple>

namespace {
struct UIGlobalFont : TextTest {
    static void set(const char* path, int size, KXPoint offset, KXAliasMode mode = KXAliasModeTexture) {
        EXPECT_EQ(KXUISetGlobalFont(path, mode, size, offset), -1);
    }
    // What is said of a text in the font that was set or in one of a size, and by how many pixels it looks
    // different from an image.
    template<class... Size>
    auto measures(const char* text, const Image& expected, Size... size) {
        const KXSize bounds = KXUIGlobalFontStringBounds(size..., text);
        const KXPoint offset = KXUIGlobalFontRenderingOffset(size...);
        const Image actual = picture([&] { KXUIGlobalFontPrint({5, 5}, white, size..., text); });
        return std::tuple(bounds.width, bounds.height, offset.x, offset.y, KXUIGlobalFontLineHeight(size...),
                          KXUIGlobalFontDescender(size...), differingPixels(actual, expected));
    }
    void expectNoFont() {
        const Image nothingDrawn = picture([] {});
        for (const auto& said : {measures("text", nothingDrawn), measures("text", nothingDrawn, 12)})
            EXPECT_EQ(said, std::tuple(0, 0, 0, 0, 0, 0, 0));
    }
};

TEST_F(UIGlobalFont, NothingWithoutAFont) {
    expectNoFont();
    set(nullptr, 12, {1, 1});
    expectNoFont();
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    set("/no/such/font.ttf", 12, {0, 0});
    EXPECT_STREQ(KXError(), "Unable to set font face size");
    expectNoFont();
    _KXDestroyGlobalFontCache();
    set(testFont(), 12, {1, 1});
    expectNoFont();
    _KXUIGlobalFontPrint(nullptr, {4, 4}, white, "text");
    _KXUIForgetGlobalFont();
    EXPECT_EQ(_KXUIGlobalFontPath, nullptr);
}

TEST_F(UIGlobalFont, TextIsPrintedAsAFormatAndMeasuredAsItIsWritten) {
    set(testFont(), 13, {2, 3});
    KXFont& font = *_KXUIGlobalFont;
    ASSERT_NE(font.lineHeight(), std::floor(font.lineHeight()));
    for (const auto& [text, shown] : {std::pair{"{C1,0,0,1}Text{EC} gj", "{C1,0,0,1}Text{EC} gj"},
                                      {"50% and 50%% more", "50% and 50% more"},
                                      {"%s%n%d", "%s%n%d"},
                                      {"{C1,0,0,1}100%%{EC} %", "{C1,0,0,1}100%{EC} %"},
                                      {"x%%%%", "x%%"}}) {
        const KXSize bounds = font.stringBounds(text, 0);
        const std::tuple expected(std::ceil(bounds.width), std::ceil(bounds.height), 2, 3,
                                  static_cast<int>(font.lineHeight()) + 1, font.descender(), 0);
        const Image image = picture([&, s = shown] { font.print({5, 5}, white, "%s", s); });
        EXPECT_EQ(measures(text, image), expected);
        EXPECT_EQ(measures(text, image, 13), expected);
    }
    EXPECT_EQ(std::get<0>(measures(nullptr, picture([] {}))), 0);
    EXPECT_GT(KXUIGlobalFontLineHeight(40), KXUIGlobalFontLineHeight());
}

TEST_F(UIGlobalFont, OneOffsetForEverySize) {
    set(testFont(), 12, {2, 3}, KXAliasModePolygon);
    KXFont* const other = _KXUIGlobalFontWithSize(18);
    EXPECT_EQ(_KXUIGlobalFontWithSize(12), _KXUIGlobalFont);
    EXPECT_EQ(_KXUIGlobalFontRenderingOffset(other).y, 3);
    other->setRenderingOffsetForSize(18, {9, 9}); // lasts until the size is asked for again
    EXPECT_EQ(KXUIGlobalFontRenderingOffset(18).x, 2);
    // Its own path serves as the argument as well as any.
    set(_KXUIGlobalFontPath, 18, {-4, 0});
    EXPECT_EQ(KXUIGlobalFontRenderingOffset().x, -4);
    EXPECT_EQ(other->renderingOffsetForSize(18).x, 2); // a font of before keeps what it has
    EXPECT_EQ(_KXUIGlobalFont->_aliasModeInUse(), KXAliasModeTexture);
    KXClearGUIFontCache();
    EXPECT_EQ(KXUIGlobalFontLineHeight(), 0);
    EXPECT_GT(KXUIGlobalFontLineHeight(18), 0); // sizes are fetched when they are asked for
}
} // namespace
