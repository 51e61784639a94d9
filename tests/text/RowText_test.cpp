#include "text/RowText.h"

#include "text/TextTest.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXFont.h>

namespace {
struct RowText : TextTest {
    float widthOf(const std::string& text) { return font.advance(text.c_str()); }
    std::string fit(const std::string& text, float width, _KXSpans spans = _KXSpans::Plain) {
        return _KXTextThatFits(font, text.c_str(), width, spans);
    }
    std::string fitEnd(const std::string& text, float width) {
        return _KXTextEndThatFits(font, text.c_str(), width);
    }
    KXFont font{testFont(), KXAliasModeTexture};
};

TEST_F(RowText, IsCutBetweenCharacters) {
    for (const std::string source : {"Wide as a house", "\u00e9\u00df\u0416\u03a9\u20ac\u00e9\u00df\u0416",
                                     "{C1,0,0,1}plain{EC}", "\x80\x80\x80\x80\x80\x80\x80\x80"}) {
        const std::string text = _KXLegibleText(source.c_str()).get();
        EXPECT_EQ(fit(source, widthOf(text)), text);
        EXPECT_EQ(fitEnd(source, widthOf(text)), text);
        for (float width = widthOf(text) - 1; width > widthOf("..."); width -= 3) {
            const std::string cut = fit(source, width), begin = cut.substr(0, cut.size() - 3);
            const std::string cutEnd = fitEnd(source, width), end = cutEnd.substr(3);
            ASSERT_TRUE(text.starts_with(begin) && cut == begin + "...") << cut;
            ASSERT_TRUE(text.ends_with(end) && cutEnd == "..." + end) << cutEnd;
            EXPECT_EQ(_KXLegibleText(begin.c_str()).get() + end, begin + _KXLegibleText(end.c_str()).get());
            // As much as fits: a character more would not. Kerning moves the dots.
            EXPECT_LE(std::max(widthOf(cut), widthOf(cutEnd)), width + 1) << cut;
            EXPECT_GT(widthOf(text.substr(0, _KXNextCharacter(text, begin.size())) + "...") + 2, width)
                << cut;
            EXPECT_GT(widthOf("..." + text.substr(_KXPreviousCharacter(text, text.size() - end.size()))) + 2,
                      width);
        }
        for (float none : {0.0f, -5.0f, NAN})
            EXPECT_EQ(fit(text, none) + fitEnd(text, none), "......");
    }
    EXPECT_EQ(fit("", 0) + fitEnd("", 0), "");
}

TEST_F(RowText, AVeryLongTextShowsThatItGoesOn) {
    std::string accents = "x";
    for (int i = 0; i < 600; ++i)
        accents += "\u00e9";
    EXPECT_EQ(fit(std::string(100000, 'i'), 1e6f), std::string(1023, 'i') + "...");
    EXPECT_LT(fit(std::string(100000, 'i'), 100).size(), 60u);
    EXPECT_EQ(fit(accents, 1e6f), accents.substr(0, 1023) + "...");
    EXPECT_EQ(fit("x" + accents, 1e6f), "x" + accents.substr(0, 1021) + "...");
    EXPECT_EQ(fitEnd(accents + "x", 1e6f), "..." + accents.substr(181) + "x");
}

TEST_F(RowText, ACutSpanKeepsItsColour) {
    const std::string span = "{C1,0,0,1}two", text = "one" + span + "{EC}three";
    for (const auto& [visible, cut] : {std::pair<std::string, std::string>{"on...", "on..."},
                                       {"onetw...", "one{C1,0,0,1}tw...{EC}"},
                                       {"onetwoth...", "one" + span + "{EC}th..."},
                                       {"onetwothree", text}})
        EXPECT_EQ(fit(text, widthOf(visible) + 0.5f, _KXSpans::Colored), cut);
    // Spans that are none or lie across each other: dots, and nothing else goes wrong.
    for (const char* odd :
         {"{C1,0,0,1}never closed at all", "a}b{C1,0,0,1}far too long{EC}c", "{C}{EC}{C,,,}{EC}far too long"})
        EXPECT_NE(fit(odd, 30, _KXSpans::Colored).find("..."), std::string::npos);
}

TEST_F(RowText, IsFittedAnewWhenSomethingChanged) {
    _KXFittedText fitted;
    std::string log;
    const auto show = [&](const char* text, float width) {
        log += fitted.of(font, text, width, [&](const char* shown, float) { return log += '+', shown; });
    };
    for (const int size : {10, 12}) {
        font.setSize(size);
        for (const auto& [text, width] : {std::pair{"a", 10}, {"a", 10}, {"b", 10}, {"b", 11}, {"b", 11}})
            show(text, static_cast<float>(width));
    }
    EXPECT_EQ(log, "+aa+b+bb+aa+b+bb");
}
} // namespace
