#include "util/Utf8.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {
TEST(Utf8, IllFormedBytesBecomeQuestionMarks) {
    const std::pair<std::string, std::string> rows[] = {
        {"\x80z\xBF", "?z?"},
        {"\xF0\x9F\x98", "???"},
        {"\xC3z\xE2\x82z\xF0\x9F\x98z\xC3\xC3\xA4", "?z??z???z?\xC3\xA4"},
        {"\xC1\xBFz\xE0\x9F\xBF\xF0\x8F\xBF\xBF", "??z???????"}, // longer than they need to be
        {"\xED\xA0\x80", "???"},                                 // half of a pair
        {"\xF4\x90\x80\x80\xF5\x80\x80\x80\xFF", "?????????"}};  // beyond the last character
    for (const auto& [text, legible] : rows) {
        const std::vector<char> block(text.c_str(),
                                      text.c_str() + text.size() + 1); // for reading on to be seen
        EXPECT_EQ(_KXLegibleText(block.data()).get(), legible);
    }
    for (const char* text :
         {"", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"})
        EXPECT_EQ(_KXLegibleText(text).get(), text) << "a copy where none is needed";
}

TEST(Utf8, OnlyACutCharacterIsDropped) {
    const auto kept = [](std::string text) {
        _KXDropCutCharacter(text.data(), text.size());
        return std::string(text.c_str());
    };
    for (const std::string cut : {"\xC3", "\xE2\x82", "\xF0\x9F\x98"})
        EXPECT_EQ(kept(cut) + kept("a" + cut), "a");
    // The last are no character's: left to be shown.
    for (const char* whole :
         {"", "ab", "a\xC3\xA4", "a\xE2\x82\xAC", "a\xF0\x9F\x98\x80", "\x80\x80\x80\x80\x80", "a\xFF"})
        EXPECT_EQ(kept(whole), whole);
}

TEST(Utf8, WalksByCharactersAndReadsAndWritesThem) {
    std::string text;
    for (const char32_t c : {0x61, 0x7F, 0x80, 0x7FF, 0x800, 0xFFFD, 0x10000, 0x10FFFF}) {
        const std::size_t start = text.size();
        _KXAppendCharacter(text, c);
        EXPECT_EQ(_KXCodePoint(_KXCharacterAt(text, start)), c);
        EXPECT_EQ(_KXNextCharacter(text + "a", start), text.size());
        EXPECT_EQ(_KXPreviousCharacter(text, text.size()), start);
        for (std::size_t inside = start; inside < text.size(); ++inside)
            EXPECT_EQ(_KXCharacterStart(text, inside), start);
    }
    EXPECT_EQ(text, "a\x7F\u0080\u07FF\u0800\uFFFD\U00010000\U0010FFFF");
    EXPECT_EQ(_KXCountCharacters(text), 8u);
    std::string_view rest = text;
    EXPECT_TRUE(_KXTakeCharacter(rest) == 'a' && rest.size() == text.size() - 1);
    // The ends, and text that is none.
    const std::string tails(100, '\x80');
    for (const std::size_t behind : {100, 101}) {
        EXPECT_TRUE(_KXNextCharacter(tails, behind) == 100 && _KXCharacterStart(tails, behind) == 100);
        EXPECT_TRUE(_KXPreviousCharacter(tails, behind) == 0 && _KXCharacterAt(tails, behind).empty());
    }
    EXPECT_TRUE(_KXCharacterAt(tails, 0) == tails && _KXCodePoint("") == 0);
}
} // namespace
