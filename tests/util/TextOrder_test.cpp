#include "util/TextOrder.h"

#include <gtest/gtest.h>

#include <utility>

namespace {
TEST(TextOrder, SortsAsPeopleDo) {
    const auto key = [](const std::string& text) { return _KXNaturalSortKey(text.c_str()); };
    std::string last;
    for (const char* text : {"a",
                             "anton",
                             "\u00e4rger",
                             "B",
                             "b2",
                             "B10",
                             "b10a",
                             "c 007",
                             "c 8",
                             "c 1000",
                             "cc",
                             "\u00c9a",
                             "\u00e9b",
                             "Nin\u0303o a",
                             "ni\u00f1o b",
                             "stra\u00dfa",
                             "Strasse",
                             "track 1.2",
                             "track 1.10",
                             "x99999999999999999999",
                             "x100000000000000000000",
                             "Zeta",
                             "\u0416a",
                             "\u0436b",
                             "\uac01",
                             "\uac02",
                             "\U0001F3AE"}) {
        EXPECT_LT(std::exchange(last, key(text)), key(text)) << text;
    }
    EXPECT_EQ(key("No. 007"), key("no. 7"));
    // Numbers longer than their length can say still come behind shorter ones.
    EXPECT_LT(key("9z"), key(std::string(300, '1') + "a"));
}

TEST(TextOrder, FoldsAndLooksUpInEveryScript) {
    const char* const begin[][2] = {{"Sword", "sW"},           {"Sword", ""},
                                    {"\u00dcbung", "\u00fcB"}, {"\u0416\u0423\u041a", "\u0436\u0443"},
                                    {"\u03a9mega", "\u03c9M"}, {"\U00010400", "\U00010428"},
                                    {"\xff\xe2\x82", "??"}};
    for (const auto& [text, typed] : begin)
        EXPECT_TRUE(_KXBeginsWith(text, _KXFoldedText(typed).c_str())) << text << " " << typed;
    const char* const others[][2] = {
        {"", "s"}, {"Sw", "sword"}, {"\u00e9", "\u00e9t"}, {"Sword", "w"}, {"\u00e9t\u00e9", "e"}};
    for (const auto& [text, typed] : others)
        EXPECT_FALSE(_KXBeginsWith(text, typed)) << text << " " << typed;
    EXPECT_EQ(_KXFoldedText("\u00c4\u20ac\U0001F3AE\xc3"), "\u00e4\u20ac\U0001F3AE?");
}
} // namespace
