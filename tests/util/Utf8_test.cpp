#include "util/Utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(Utf8, IllFormedBytesBecomeQuestionMarks) {
    const struct {
        const char *text, *legible;
    } cases[] = {
        {"", ""},
        {"\x7F\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD z",
         "\x7F\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD z"},
        {"\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF", "\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF"},
        {"\x80z\xBF", "?z?"},
        {"a\xC3", "a?"},
        {"\xE2\x82", "??"},
        {"\xF0\x9F\x98", "???"},
        {"\xC3z\xE2\x82z\xF0\x9F\x98z\xC3\xC3\xA4", "?z??z???z?\xC3\xA4"},
        {"\xC0\x80\xC1\xBFz\xE0\x9F\xBF\xF0\x8F\xBF\xBF", "????z???????"}, // longer than they need to be
        {"\xED\xA0\x80", "???"},                                           // half of a pair
        {"\xF4\x90\x80\x80\xF5\x80\x80\x80", "????????"},                  // beyond the last character
        {"\xFE\xFF\xFC\x84\x80\x80\x80\x80", "????????"},
    };
    for (const auto& c : cases) {
        const std::string text = c.text;
        const std::vector<char> block(text.c_str(),
                                      text.c_str() + text.size() + 1); // so that reading on is seen
        const _KXLegibleText legible(block.data());
        EXPECT_STREQ(legible.get(), c.legible);
        EXPECT_EQ(legible.get() == block.data(), text == c.legible) << "a copy where none is needed";
    }
}

TEST(Utf8, OnlyACutCharacterIsDropped) {
    const auto kept = [](std::string text) {
        _KXDropCutCharacter(text.data(), text.size());
        return std::string(text.c_str());
    };
    for (const char* cut : {"\xC3", "\xE2\x82", "\xF0\x9F\x98"}) {
        EXPECT_EQ(kept(cut), "");
        EXPECT_EQ(kept("a" + std::string(cut)), "a");
    }
    for (const char* whole :
         {"", "ab", "a\xC3\xA4", "a\xE2\x82\xAC", "a\xF0\x9F\x98\x80", "\x80\x80\x80\x80\x80", "\x80",
          "a\xFF"}) // the last are no character's: left to be shown
        EXPECT_EQ(kept(whole), whole);
}

TEST(Utf8, WalksByCharactersAndReadsAndWritesThem) {
    const char32_t characters[] = {U'a', 0x7F, 0x80, 0x7FF, 0x800, 0xFFFD, 0x10000, 0x10FFFF};
    std::string text;
    std::vector<std::size_t> starts;
    for (const char32_t c : characters) {
        starts.push_back(text.size());
        _KXAppendCharacter(text, c);
    }
    EXPECT_EQ(text, "a\x7F\u0080\u07FF\u0800\uFFFD\U00010000\U0010FFFF");
    EXPECT_EQ(_KXCountCharacters(text), std::size(characters));
    std::string_view rest = text;
    starts.push_back(text.size());
    for (std::size_t i = 0; i < std::size(characters); ++i) {
        EXPECT_EQ(_KXCodePoint(_KXCharacterAt(text, starts[i])), characters[i]);
        EXPECT_EQ(_KXTakeCharacter(rest), characters[i]);
        EXPECT_EQ(_KXNextCharacter(text, starts[i]), starts[i + 1]);
        EXPECT_EQ(_KXPreviousCharacter(text, starts[i + 1]), starts[i]);
        for (std::size_t inside = starts[i]; inside < starts[i + 1]; ++inside)
            EXPECT_EQ(_KXCharacterStart(text, inside), starts[i]);
    }
    EXPECT_TRUE(rest.empty());
    // The ends, and text that is none.
    EXPECT_EQ(_KXPreviousCharacter(text, 0), 0u);
    for (const std::size_t behind : {text.size(), text.size() + 1}) {
        EXPECT_EQ(_KXNextCharacter(text, behind), text.size());
        EXPECT_EQ(_KXCharacterStart(text, behind), text.size());
        EXPECT_EQ(_KXCharacterAt(text, behind), "");
    }
    EXPECT_EQ(_KXTakeCharacter(rest), 0u);
    const std::string tails(100, '\x80');
    EXPECT_EQ(_KXCharacterAt(tails, 0).size(), 100u);
    EXPECT_EQ(_KXCharacterStart(tails, 50), 0u);
    EXPECT_EQ(_KXPreviousCharacter(tails, 101), 0u);
    _KXCodePoint(tails);
}
