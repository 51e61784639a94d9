#include <Kobaltrix/KXTextLayout.h>

#include "support/Allocations.h"
#include "text/TextTest.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawBatch.h>

#include <climits>
#include <cstring>

namespace {
constexpr float cell = 12.04f; // of each letter of the monospaced font at a size of 20

struct TextLayout : TextTest {
    TextLayout() : TextTest({320, 200}) {
        mono.setSize(20);
        sans.setSize(20);
    }
    static std::string monoPath() {
        std::string path = testFont();
        return path.replace(path.rfind("Sans.ttf"), 8, "SansMono.ttf");
    }
    /// The lines of a layout, a bar behind each.
    static std::string linesOf(const KXTextLayout& layout) {
        std::string lines;
        for (int i = 0; i < layout.lineCount(); ++i) {
            const KXTextLine line = layout.line(i);
            lines.append(layout.text() + line.begin, static_cast<std::size_t>(line.end - line.begin)) += '|';
        }
        return lines;
    }
    Image ink(const KXFont& font, const char* text, const KXTextOptions& options = KXTextOptions()) {
        return picture([&] { KXTextLayout(font, text, options).draw({4, 4}, white); });
    }
    KXFont mono{monoPath().c_str(), KXAliasModeTexture}, sans{testFont(), KXAliasModeTexture};
};

TEST_F(TextLayout, LinesEndWhereWordsDo) {
    const struct {
        const char* text;
        int letters, maxLines; // that the box is wide, and takes
        const char* lines;
        int plain = 0;
    } cases[] = {{"one two three", 8, 0, "one two |three|"},
                 {"one two", 3, 0, "one |two|"}, // blanks need no room at the end
                 {"one    two", 4, 0, "one    |two|"},
                 {"abcdefgh", 3, 0, "abc|def|gh|"},
                 {"to abcdefgh", 3, 0, "to |abc|def|gh|"},
                 {"abc", -1, 0, "abc|"},
                 {"a\nb\r\n\nc\xE2\x80\xA9"
                  "d\n",
                  0, 0, "a|b||c|d||"},
                 {"", 5, 0, "|"},
                 {nullptr, 5, 2, "|"},
                 {"well-known", 6, 0, "well-|known|"},
                 {"a\u00A0b c", 3, 0, "a\u00A0b |c|"},
                 {"日本語。本", 3, 0, "日本|語。本|"}, // no line begins with a full stop
                 {"e\u0301e\u0301e\u0301", 2, 0, "e\u0301e\u0301|e\u0301|"},
                 {"a {C1,0,0,1}red b{EC}ig apple", 5, 0, "a red |big |apple|"},
                 {"{C1,0,0,1}x{EC}", 0, 0, "{C1,0,0,1}x{EC}|", -1},
                 {"\xFFx\xC3", 0, 0, "?x?|"},
                 {"\U0001F1EB\U0001F1F7 \uFFFF a", 3, 0, "\U0001F1EB\U0001F1F7 |\uFFFF a|"}, // a flag
                 {"one two", 6, 1, "one t|"}, // and the ellipsis
                 {"one two", 7, 1, "one two|"},
                 {"one two", 5, 1, "one|"}, // no blank before it
                 {"a\nb\nc", 0, 2, "a|b|"}};
    for (const auto& [text, letters, maxLines, lines, plain] : cases) {
        KXTextOptions options;
        options.width = letters > 0 ? cell * float(letters) + 1 : float(letters);
        options.maxLines = maxLines;
        options.plain = plain;
        const KXTextLayout layout(mono, text, options);
        const int isCut = text && maxLines > 0 && letters < 7 ? -1 : 0;
        EXPECT_EQ(linesOf(layout), lines) << (text ? text : "null");
        EXPECT_EQ(layout.isCut(), isCut) << lines;
        EXPECT_LE(layout.size().width, letters > 0 ? options.width : 1000);
    }
}

TEST_F(TextLayout, LinesStandAsTheyAreAligned) {
    const char *latin = "ab ab\nab", *hebrew = "אב אב\nאב"; // as wide
    const float box = 100;
    for (const auto& [text, align, first, second] : {std::tuple{latin, 0, 0.0f, 0.0f},
                                                     {latin, 1, 0.0f, 0.0f},
                                                     {latin, 2, 0.5f, 0.5f},
                                                     {latin, 3, 1.0f, 1.0f},
                                                     {latin, 4, 0.0f, 0.0f},
                                                     {latin, 99, 0.0f, 0.0f},
                                                     {hebrew, 0, 1.0f, 1.0f},
                                                     {hebrew, 1, 0.0f, 0.0f},
                                                     {hebrew, 4, -1.0f, 1.0f}}) {
        KXTextOptions options;
        options.width = box;
        options.align = KXTextAlign(align);
        const KXTextLayout layout(text == latin ? mono : sans, text, options);
        for (const auto& [index, share] : {std::pair{0, first}, {1, second}}) {
            const KXRect rect = layout.line(index).rect;
            if (share >= 0) {
                EXPECT_NEAR(rect.origin.x, share * (box - rect.size.width), 0.51f) << text << align;
            }
        }
    }
    KXTextOptions options; // what is justified fills the box, but in the last line of a paragraph
    options.width = 3.5f * cell;
    options.align = KXTextAlignJustified;
    const KXTextLayout layout(mono, "a b c d", options);
    EXPECT_NEAR(layout.line(0).rect.size.width, options.width, 0.01f);
    EXPECT_NEAR(layout.caret(2).origin.x, options.width - cell, 0.01f);
    EXPECT_NEAR(layout.line(1).rect.size.width, 3 * cell, 0.05f);
    options.tabWidth = 50;
    EXPECT_NEAR(KXTextLayout(mono, "a\tb\tc", {}).caret(2).origin.x, 8 * cell, 0.1f);
    options.width = 0;
    EXPECT_NEAR(KXTextLayout(mono, "a\tb\tc", options).caret(4).origin.x, 100, 0.05f);
}

// Whatever runs which way: the character at a place is the one that a caret beside it says.
TEST_F(TextLayout, CaretsAndHitsAgree) {
    for (const char* text :
         {"office", "abc אבגד def", "אבגד 123 abc", "سلام عالم", "e\u0301a\u0308", "a\n\nbc"}) {
        const KXTextLayout layout(sans, text);
        int index = 0;
        for (const int end = int(std::strlen(text)); index < end;) {
            KXRect rects[4];
            int next = index + 1; // behind the character: it is in one piece
            while (next < end && layout.hit({layout.caret(next).origin.x, 0}).inside &&
                   layout.selection(index, next, nullptr, 0) == 1 && (text[next] & 0xC0) == 0x80)
                ++next;
            if (text[index] != '\n') {
                ASSERT_EQ(layout.selection(index, next, rects, 4), 1) << text << index;
                const KXRect rect = rects[0];
                const KXPoint middle = {rect.origin.x + rect.size.width * 0.5f, rect.origin.y + 3};
                const KXTextHit hit = layout.hit(middle);
                EXPECT_EQ(hit.inside, -1) << text << index;
                EXPECT_TRUE(hit.character <= index && index < std::max(hit.character + 4, hit.caret))
                    << text << index;
                const float before = layout.caret(hit.character).origin.x;
                EXPECT_TRUE(std::fabs(before - rect.origin.x) < 0.1f ||
                            std::fabs(before - rect.origin.x - rect.size.width) < 0.1f)
                    << text << index;
            }
            index = next;
        }
    }
    const KXTextLayout mixed(sans, "ab אבג");
    EXPECT_LT(mixed.caret(7).origin.x, mixed.caret(5).origin.x); // further on is further left
    EXPECT_LT(mixed.caret(9).origin.x, mixed.caret(7).origin.x);
    KXRect rects[2];
    EXPECT_EQ(mixed.selection(1, 5, rects, 2), 2); // b and the blank, and the letter at the right
    EXPECT_GT(rects[1].origin.x, rects[0].origin.x + rects[0].size.width);
    EXPECT_EQ(mixed.hit({-5, 400}).caret, 0);
    EXPECT_EQ(KXTextLayout(sans, "").caret(99).origin.x + KXTextLayout().caret(0).size.height, 0);
}

TEST_F(TextLayout, LooksAsAFontPrintsIt) {
    KXTextLayout layout(sans, "sharp 12 жук");
    const float above = layout.line(0).baseline - std::floor(sans.ascender()) - std::floor(sans.descender());
    const Image printed = picture([&] { sans.print({9, 30 + above}, white, "sharp 12 жук"); });
    const auto draw = [&] { layout.draw({9, 30}, white); };
    EXPECT_EQ(picture(draw).pixels, printed.pixels);
    EXPECT_EQ(picture([&] {
                  KXBeginDrawBatch();
                  draw();
                  KXEndDrawBatch();
              }).pixels,
              printed.pixels);
    EXPECT_EQ(picture([&] {
                  KXPushCamera({{120, 100}});
                  layout.draw({-31, 30}, white);
                  KXPopCamera();
              }).pixels,
              printed.pixels);
    const auto inTexture = [this](auto show) {
        KXTexture target(320, 200);
        target.setRenderContext();
        show();
        window->setRenderContext();
        return picture([&] { target.draw(0, 0, 0); }).pixels;
    };
    EXPECT_EQ(inTexture(draw), inTexture([&] { sans.print({9, 30 + above}, white, "sharp 12 жук"); }));
    const auto another = makeWindow({320, 200}); // whose glyphs are others
    EXPECT_EQ(picture(draw, another.get()).pixels, printed.pixels);
    window->setRenderContext();
    EXPECT_EQ(picture([&] {
                  layout.drawUpTo({9, 30}, white, 5);
              }).pixels,
              picture([&] {
                  KXTextLayout(sans, "sharp").draw({9, 30}, white);
              }).pixels);
}

TEST_F(TextLayout, ShapesJoinsAndFallsBack) {
    // Hebrew stands in reverse, brackets and all; marks sit on their letters; Arabic letters join.
    KXTextOptions toRight;
    toRight.direction = KXTextDirectionLeftToRight;
    EXPECT_EQ(ink(sans, "(אב)").pixels, ink(sans, "\u202D(בא)\u202C", toRight).pixels);
    EXPECT_EQ(KXTextLayout(sans, "a\u0302").size().width, KXTextLayout(sans, "a").size().width);
    EXPECT_LT(KXTextLayout(sans, "سلام").size().width,
              KXTextLayout(sans, "س\u200Cل\u200Cا\u200Cم").size().width);
    // A font without a letter asks the next one.
    const Image lacks = ink(mono, "ש");
    EXPECT_NE(lacks.pixels, ink(sans, "ש").pixels);
    {
        KXFont gone(testFont(), KXAliasModeTexture);
        mono.addFallback(KXFont("/no/such/font.ttf", KXAliasModeTexture));
        mono.addFallback(gone);
    }
    EXPECT_EQ(boxOf(ink(mono, "ש"))[3] - boxOf(ink(mono, "ש"))[1],
              boxOf(ink(sans, "ש"))[3] - boxOf(ink(sans, "ש"))[1]);
    EXPECT_EQ(KXTextLayout(KXFont("/no/such/font.ttf", KXAliasModeTexture), "x").lineCount(), 0);
}

TEST_F(TextLayout, FontsComeFromMemoryByNameAndFromTheCache) {
    const std::string bytes = contentOf(testFont());
    KXFont packed(bytes.data(), bytes.size(), KXAliasModeTexture);
    packed.setSize(20);
    EXPECT_EQ(ink(packed, "Été").pixels, ink(sans, "Été").pixels);
    const auto printed = [&](KXFont& font) {
        return picture([&] { font.print({4, 4}, white, "x"); }).pixels;
    };
    EXPECT_EQ(printed(packed), printed(sans));
    EXPECT_EQ(KXFont("garbage", 7, KXAliasModeTexture).setSize(9) + KXFont(nullptr, 9, 1).getSize(), 0);
    for (const char* name : {"dejavu sans", "sans", "serif", "monospace"}) {
        const char* const path = KXFindFont(name);
        ASSERT_NE(path, nullptr) << name;
        EXPECT_NE(KXFont(path, KXAliasModeTexture).setSize(9), 0) << path;
        EXPECT_EQ(std::string(path).find('\\'), std::string::npos) << path;
    }
    EXPECT_EQ(contentOf(KXFindFont("dejavu sans")), bytes);
    EXPECT_NE(std::string(KXFindFont("sans")), KXFindFont("monospace"));
    for (const char* none : {"No Such Font", "", ":bold", "%s", static_cast<const char*>(nullptr)})
        EXPECT_EQ(KXFindFont(none), nullptr);
    KXFont* const cached = KXCachedFont(testFont(), KXAliasModeTexture, 9);
    ASSERT_NE(cached, nullptr);
    EXPECT_EQ(cached->getSize(), 9);
    EXPECT_EQ(KXCachedFont(testFont(), KXAliasModeTexture, 9), cached);
    EXPECT_NE(KXCachedFont(testFont(), KXAliasModeTexture, 8), cached);
}

TEST_F(TextLayout, PicturesKeepTheirColours) {
    const char* const path = KXFindFont("Noto Color Emoji");
    ASSERT_NE(path, nullptr) << "./check installs it";
    mono.addFallback(KXFont(path, KXAliasModeTexture));
    KXTextOptions options;
    options.outline = 1;
    const KXTextLayout owl(mono, "{C0,0,1,1}\U0001F989{EC}", options);
    const auto drawn = [&](KXColor color) { return picture([&] { owl.draw({4, 4}, color); }); };
    const Image seen = drawn(white);
    const auto [left, top, right, bottom] = boxOf(seen);
    EXPECT_NEAR(bottom - top, 23, 2); // about as high as letters
    EXPECT_NEAR(owl.size().width, 25, 1);
    EXPECT_GT(std::ranges::count_if(seen.pixels, [](Pixel p) { return p.r > p.b + 40; }), 100) << "brown";
    EXPECT_EQ(differingPixels(drawn({0, 1, 0, 1}), seen), 0);
    const KXTextLayout faint(mono, "{C0,0,1,.5}\U0001F989{EC}");
    const Pixel whole = seen.at((left + right) / 2, bottom - 6);
    const Image half = picture([&] { faint.draw({4, 4}, white); });
    EXPECT_NEAR(half.at((left + right) / 2, bottom - 6).r, whole.r / 2, 2);
}

TEST_F(TextLayout, StandsInTheMiddleIsOutlinedAndThrowsAShadow) {
    // A caption is in the middle of its button by its capitals; an outline reaches around, a shadow falls.
    KXTextOptions options;
    options.height = 100;
    options.verticalAlign = KXTextMiddle;
    for (const char* caption : {"HEH", "H\nH"}) {
        const Box box = boxOf(ink(sans, caption, options));
        EXPECT_NEAR(box[1] + box[3], 2 * 54, 1) << caption;
    }
    options.verticalAlign = KXTextBottom;
    const KXRect lowest = KXTextLayout(sans, "H\nH", options).line(1).rect;
    EXPECT_EQ(lowest.origin.y + lowest.size.height, 100);
    options = {};
    const float step = KXTextLayout(sans, "H\nH").line(1).baseline - KXTextLayout(sans, "H").line(0).baseline;
    options.lineSpacing = 1.5f;
    const KXTextLayout apart(sans, "H\nH", options);
    EXPECT_NEAR(apart.line(1).baseline - apart.line(0).baseline, 1.5f * step, 0.51f);
    const Box plain = boxOf(ink(sans, "H"));
    options = {};
    options.outline = 3;
    options.outlineColor = {1, 0, 0, 1};
    const Box grown = boxOf(ink(sans, "H", options));
    EXPECT_EQ(grown[2] - grown[0], plain[2] - plain[0] + 6);
    options.outline = 0;
    options.shadow = {30, 7};
    options.shadowColor = {0, 1, 0, 1};
    EXPECT_EQ(boxOf(ink(sans, "H", options))[2], plain[2] + 30);
}

TEST_F(TextLayout, ASteadyFrameNeedsNoMemory) {
    KXTextOptions options;
    options.width = 200;
    options.outline = 1;
    KXTextLayout layout;
    const auto frame = [&] {
        layout.layOut(sans, "A story {C1,0,0,1}in many{EC} lines, أهلا too", options);
        layout.draw({3, 4}, white);
    };
    frame();
    EXPECT_EQ(allocationsOf(frame), 0u);
    KXTextLayout moved(std::move(layout));
    EXPECT_EQ(layout.lineCount() + layout.isCut(), 0); // NOLINT: what was moved from is empty
    EXPECT_GT(moved.lineCount(), 0);
}

TEST_F(TextLayout, AnyTextInAnyBox) {
    std::mt19937 numbersFrom(7);
    const auto any = [&](std::uint32_t below) { return static_cast<std::uint32_t>(numbersFrom() % below); };
    // Latin, marks, Hebrew, Arabic, Devanagari, directions and joiners, Han, emoji, control characters, any.
    constexpr std::pair<char32_t, char32_t> scripts[] = {
        {0x20, 0x17F},    {0x300, 0x36F},   {0x590, 0x5FF},     {0x600, 0x6FF}, {0x900, 0x97F},
        {0x2000, 0x206F}, {0x4E00, 0x4E80}, {0x1F300, 0x1F650}, {1, 0x20},      {0xE000, 0x10FFFF}};
    constexpr float numbers[] = {0, 1, 30, 120, -5, NAN, INFINITY, 1e30f};
    for (int round = 0; round < 1000; ++round) {
        std::string text;
        for (std::uint32_t i = any(60); i > 0; --i) {
            const auto [first, last] = scripts[any(std::size(scripts))];
            for (std::uint32_t j = any(5); j > 0; --j)
                _KXAppendCharacter(text, first + any(last - first + 1));
        }
        KXTextOptions options;
        options.width = numbers[any(8)];
        options.height = numbers[any(8)];
        options.lineSpacing = numbers[any(8)];
        options.tabWidth = numbers[any(8)];
        options.align = KXTextAlign(any(6));
        options.direction = KXTextDirection(any(4));
        options.maxLines = static_cast<int>(any(4)) - 1;
        const KXTextLayout layout(sans, text.c_str(), options);
        const int length = static_cast<int>(std::strlen(layout.text()));
        int last = 0;
        for (int i = 0; i < layout.lineCount(); ++i) {
            const KXTextLine line = layout.line(i);
            ASSERT_TRUE(last <= line.begin && line.begin <= line.end && line.end <= length) << text;
            last = line.end;
            for (float x = -20; x < 200; x += 20) {
                const KXTextHit hit = layout.hit({x, line.rect.origin.y + 2});
                ASSERT_TRUE(line.begin <= hit.character && hit.character <= line.end) << text;
                ASSERT_TRUE(line.begin <= hit.caret && hit.caret <= line.end) << text;
            }
        }
        for (const int index : {INT_MIN, 0, length / 2, length, INT_MAX})
            ASSERT_TRUE(std::isfinite(layout.caret(index).origin.x)) << text;
        layout.selection(length / 3, length, nullptr, 5);
        if (round % 10 == 0)
            layout.draw({0, 0}, white);
    }
}
} // namespace
