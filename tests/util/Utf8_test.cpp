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
