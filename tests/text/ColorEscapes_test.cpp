#include "text/ColorEscapes.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {
struct Parsed {
    std::string marked; // every span as <red green blue alpha:text>
    std::string visible;
};

// Parses a copy that ends where its heap block ends, so that reading further is seen.
Parsed parse(const std::string& text) {
    const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
    const char* position = block.data();
    std::ostringstream marked, visible;
    _KXColorSpan span;
    while (_KXNextColorSpan(position, span)) {
        const KXColor& c = span.color;
        marked << span.plain << '<' << c.r << ' ' << c.g << ' ' << c.b << ' ' << c.a << ':' << span.text
               << '>';
        visible << span.plain << span.text;
    }
    marked << position;
    visible << position;
    return {marked.str(), visible.str()};
}

std::string visible(const std::string& text, std::size_t size = 1024) {
    std::vector<char> out(size + 1, '#');
    _KXVisibleText(out.data(), size, text.c_str());
    EXPECT_EQ(out[size], '#') << text;
    return out.data();
}

TEST(ColorEscapes, SpansAreReadAsWritten) {
    const struct {
        const char *text, *marked;
    } cases[] = {
        {"{C1,0,0,1}red{EC} rest", "<1 0 0 1:red> rest"},
        {"a{C0.5,.25,1e-1,+1}b{EC}c{C0,1,0,0.75}{EC}", "a<0.5 0.25 0.1 1:b>c<0 1 0 0.75:>"},
        {"{C 1 , 2x,,-1e999}t{EC}", "<1 2 0 -inf:t>"},
        // Spans do not nest: the first end marker ends the outer one.
        {"{C1,0,0,1}a{C0,1,0,1}b{EC}c{EC}", "<1 0 0 1:a{C0,1,0,1}b>c{EC}"},
        // Commas of later text serve a header that has too few.
        {"{C1,0}a, b, c{EC}d", "<1 0 0 0:a, b, c>d"},
        // A brace before the span is taken for the end of its colour.
        {"a}b{C1,0,0,1}x{EC}y", "a}b<1 0 0 0:b{C1,0,0,1}x>y"},
        {"{C1}0,0,0,0{EC}z", "<1 0 0 0:0,0,0,0>z"},
        // The first brace is the end marker's: nothing lies between it and the marker's beginning.
        {"{C1,0,0,1{EC}z", "<1 0 0 1:>z"},
        // What is incomplete stays as it is.
        {"", ""},
        {"{C1,0,0}x{EC}", "{C1,0,0}x{EC}"},
        {"{C1,0,0,1}x", "{C1,0,0,1}x"},
        {"{C1,0,0,1 x{EC", "{C1,0,0,1 x{EC"},
        {"a{C1,0,0,1}b{EC}{C1,", "a<1 0 0 1:b>{C1,"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parse(c.text).marked, c.marked);
}

TEST(ColorEscapes, EveryOrderOfThePartsIsSafe) {
    const char* parts[] = {"{C", "}", ",", "{EC}", "1", "{"};
    for (int code = 0; code < 6 * 6 * 6 * 6 * 6; ++code) {
        std::string text;
        for (int i = 0, rest = code; i < 5; ++i, rest /= 6)
            text += parts[rest % 6];
        text += ",,,{EC}";
        EXPECT_EQ(visible(text), parse(text).visible) << text;
    }
}

TEST(ColorEscapes, VisibleTextIsCutBetweenCharacters) {
    const std::string longText(3000, 'x');
    const struct {
        std::string text;
        std::size_t size;
        std::string visible;
    } cases[] = {
        {"abc{C1,0,0,1}def{EC}ghi", 6, "abcde"},
        {"abc{C1,0,0,1}def{EC}ghi", 10, "abcdefghi"},
        {"abc", 1, ""},
        {"ab\xC3\xA4", 4, "ab"},
        {"ab\xC3\xA4", 5, "ab\xC3\xA4"},
        {"ab{C1,0,0,1}\xC3\xA4{EC}c", 4, "ab"}, // nothing moves up into the room of a cut character
        {"{C1,0,0,1}" + longText + "{EC}y", 1024, longText.substr(0, 1023)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(visible(c.text, c.size), c.visible) << c.text;
}
} // namespace
