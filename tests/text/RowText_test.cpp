#include "text/RowText.h"

#include "ui/UITest.h"

#include "text/KXUIGlobalFont.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXFont.h>

namespace {
struct RowText : UITest {
    KXFont& font = *_KXUIGlobalFont;
    float widthOf(const std::string& text) { return font.advance(text.c_str()); }
    std::string fit(const std::string& text, float width, _KXSpans spans = _KXSpans::Plain) {
        return _KXTextThatFits(font, text.c_str(), width, spans);
    }
};

TEST_F(RowText, IsCutBetweenCharacters) {
    const std::string texts[] = {"Wide as a house", "\u00e9\u00df\u0416\u03a9\u20ac\u00e9\u00df\u0416",
                                 "{C1,0,0,1}plain{EC}", "\x80\x80\x80\x80\x80\x80\x80\x80"};
    for (const std::string& source : texts) {
        const std::string text = _KXLegibleText(source.c_str()).get();
        const float whole = widthOf(text);
        EXPECT_EQ(fit(source, whole), text);
        std::size_t before = text.size();
        for (float width = whole - 1; width > widthOf("..."); width -= 3) {
            const std::string cut = fit(source, width);
            ASSERT_TRUE(cut.ends_with("...")) << cut;
            const std::string kept = cut.substr(0, cut.size() - 3);
            EXPECT_LE(widthOf(cut), width + 1) << cut; // kerning moves the dots
            EXPECT_TRUE(text.starts_with(kept)) << cut;
            EXPECT_LE(kept.size(), before);
            before = kept.size();
            EXPECT_EQ(_KXLegibleText(kept.c_str()).get(), kept) << "half a character";
            // As much as fits: the next character would not.
            std::size_t next = kept.size() + 1;
            while (next < text.size() && (text[next] & 0xC0) == 0x80)
                ++next;
            EXPECT_GT(widthOf(text.substr(0, next) + "...") + 2, width) << cut;
        }
        for (float none : {0.0f, -5.0f, NAN})
            EXPECT_EQ(fit(text, none), "...");
    }
    EXPECT_EQ(fit("", 0), "");
}

TEST_F(RowText, AVeryLongTextShowsThatItGoesOn) {
    const std::string endless(100000, 'i');
    const std::string cut = fit(endless, 1e6f);
    EXPECT_EQ(cut, std::string(1023, 'i') + "...");
    EXPECT_LT(fit(endless, 100).size(), 60u);
    const std::string accents = "x" + [] {
        std::string text;
        for (int i = 0; i < 600; ++i)
            text += "\u00e9";
        return text;
    }();
    EXPECT_EQ(fit(accents, 1e6f), accents.substr(0, 1023) + "...");
    EXPECT_EQ(fit("x" + accents, 1e6f), "x" + accents.substr(0, 1021) + "...");
}

TEST_F(RowText, ACutSpanKeepsItsColour) {
    const std::string red = "{C1,0,0,1}", end = "{EC}", text = "one" + red + "two" + end + "three";
    const auto fitVisible = [&](const std::string& visible) {
        return fit(text, widthOf(visible + "...") + 0.5f, _KXSpans::Colored);
    };
    EXPECT_EQ(fitVisible("on"), "on...");
    EXPECT_EQ(fitVisible("onetw"), "one" + red + "tw..." + end);
    EXPECT_EQ(fitVisible("onetwoth"), "one" + red + "two" + end + "th...");
    EXPECT_EQ(fit(text, widthOf("onetwothree"), _KXSpans::Colored), text);
    // Spans that are none or lie across each other: dots, and nothing else goes wrong.
    for (const char* odd : {"{C1,0,0,1}never closed at all", "a}b{C1,0,0,1}far too long{EC}c",
                            "{C}{EC}{C,,,}{EC}far too long"}) {
        const std::string cut = fit(odd, 30, _KXSpans::Colored);
        EXPECT_NE(cut.find("..."), std::string::npos) << cut;
    }
}

TEST_F(RowText, PlainSpansAreShownAsWritten) {
    const auto plain = [&](const char* text) { return draw([&] { font._printPlain({4, 4}, white, text); }); };
    const Image braces = plain("{C1,0,0,1}name{EC}{C");
    int red = 0;
    for (const Pixel& pixel : braces.pixels)
        red += pixel.r > pixel.g + 40;
    EXPECT_EQ(red, 0);
    EXPECT_GT(differingPixels(braces, plain("name"), 40), 100);
    EXPECT_EQ(differingPixels(plain("100%s %n"), draw([&] {
                                  font.print({4, 4}, white, "%s", "100%s %n");
                              })),
              0);
}
} // namespace
