#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(Utf8, IllFormedBytesBecomeQuestionMarks) {
    const struct {
        const char *text, *legible;
    } cases[] = {
        {"", ""},
        {"a\x7F\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD z",
         "a\x7F\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD z"},
        {"\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF", "\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF"},
        {"\x80"
         "a\xBF",
         "?a?"},
        {"a\xC3", "a?"},
        {"\xE2\x82", "??"},
        {"\xF0\x9F\x98", "???"},
        {"\xC3z\xE2\x82z\xF0\x9F\x98z", "?z??z???z"},
        {"\xC0\x80\xC1\xBF", "????"}, // too long for what they stand for
        {"\xE0\x9F\xBF\xF0\x8F\xBF\xBF", "???????"},
        {"\xED\xA0\x80", "???"},                          // half of a pair
        {"\xF4\x90\x80\x80\xF5\x80\x80\x80", "????????"}, // beyond the last character
        {"\xFE\xFF\xFC\x84\x80\x80\x80\x80", "????????"},
        {"\xC3\xC3\xA4", "?\xC3\xA4"},
    };
    for (const auto& c : cases) {
        const std::string text = c.text;
        const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
        const _KXLegibleText legible(block.data());
        EXPECT_STREQ(legible.get(), c.legible);
        if (text == c.legible) {
            EXPECT_EQ(legible.get(), block.data());
        }
    }
}

TEST(Utf8, OnlyACutCharacterIsDropped) {
    const struct {
        const char *text, *kept;
    } cases[] = {
        {"", ""},
        {"ab", "ab"},
        {"a\xC3\xA4", "a\xC3\xA4"},
        {"a\xC3", "a"},
        {"a\xE2\x82", "a"},
        {"a\xE2\x82\xAC", "a\xE2\x82\xAC"},
        {"a\xF0\x9F\x98", "a"},
        {"a\xF0\x9F\x98\x80", "a\xF0\x9F\x98\x80"},
        {"\xF0\x9F\x98", ""},
        {"\x80\x80\x80\x80\x80", "\x80\x80\x80\x80\x80"}, // no character's, so left to be shown
        {"\x80", "\x80"},
        {"a\xFF", "a\xFF"},
    };
    for (const auto& c : cases) {
        std::string text = c.text;
        _KXDropCutCharacter(text.data(), text.size());
        EXPECT_STREQ(text.c_str(), c.kept);
    }
}
