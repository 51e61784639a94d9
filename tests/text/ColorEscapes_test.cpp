#include "text/ColorEscapes.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

// A text with every span as <red green blue alpha:text>. Reads a copy that ends where its heap block ends, so
// that reading further is seen.
static std::string marked(const std::string& text) {
    const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
    std::ostringstream out;
    const char* position = block.data();
    for (_KXColorSpan s; _KXNextColorSpan(position, s); out << ':' << s.text << '>')
        out << s.plain << '<' << s.color.r << ' ' << s.color.g << ' ' << s.color.b << ' ' << s.color.a;
    out << position;
    return out.str();
}

TEST(ColorEscapes, SpansAreReadAsWrittenAndCutBetweenCharacters) {
    const struct {
        const char *text, *marked, *visible;
        std::size_t size = 99; // room for what is visible
    } cases[] = {
        {"", "", ""},
        {"{C1,0,0,1}red{EC} rest", "<1 0 0 1:red> rest", "red rest", 9},
        {"{C1,0,0,1}red{EC} rest", "<1 0 0 1:red> rest", "red res", 8},
        {"{C1,0,0,1}red{EC} rest", "<1 0 0 1:red> rest", "re", 3},
        {"a{C1,0,0,1}\u00c4{EC}c", "a<1 0 0 1:\u00c4>c", "a", 3}, // nothing moves up into the room left
        {"a{C0.5,.25,1e-1,+1}b{EC}c{C0,1,0,0.75}{EC}", "a<0.5 0.25 0.1 1:b>c<0 1 0 0.75:>", "a", 2},
        {"{C 1 , 2x,,-1e999}t{EC}", "<1 2 0 -inf:t>", "", 1},
        // Spans do not nest: the first end marker ends the outer one.
        {"{C1,0,0,1}a{C0,1,0,1}b{EC}c{EC}", "<1 0 0 1:a{C0,1,0,1}b>c{EC}", "a{C0,1,0,1}bc{EC}"},
        // Commas of later text serve a header that has too few.
        {"{C1,0}a, b, c{EC}d", "<1 0 0 0:a, b, c>d", "a, b, cd"},
        // The first brace behind the span before is taken for the end of the colour.
        {"a}b{C1,0,0,1}x{EC}y", "a}b<1 0 0 0:b{C1,0,0,1}x>y", "a}bb{C1,0,0,1}xy"},
        {"{C1,0,0,1{EC}z", "<1 0 0 1:>z", "z"},
        // What is incomplete stays as it is.
        {"{C1,0,0}x{EC}", "{C1,0,0}x{EC}", "{C1,0,0}x{EC}"},
        {"{C1,0,0,1 x{EC", "{C1,0,0,1 x{EC", "{C1,0,0,1 x{EC"},
        {"a{C1,0,0,1}b{EC}{C1,", "a<1 0 0 1:b>{C1,", "ab{C1,"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(marked(c.text), c.marked);
        std::vector<char> out(c.size + 1, '#');
        _KXVisibleText(out.data(), c.size, c.text);
        EXPECT_STREQ(out.data(), c.visible);
        EXPECT_EQ(out[c.size], '#') << c.text;
    }
}
