#include "util/TextOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {
TEST(TextOrder, SortsAsPeopleDo) {
    const std::vector<std::string> order = {"",
                                            "a",
                                            "B",
                                            "b2",
                                            "B10",
                                            "b10a",
                                            "c 007",
                                            "c 8",
                                            "c 1000",
                                            "cc",
                                            "track 1.2",
                                            "track 1.10",
                                            "x99999999999999999999",
                                            "x100000000000000000000",
                                            "\u00c9a",
                                            "\u00e9b",
                                            "\u0416a",
                                            "\u0436b",
                                            "\U0001F3AE"};
    std::vector<std::string> sorted(order.rbegin(), order.rend());
    std::sort(sorted.begin(), sorted.end(), [](const std::string& a, const std::string& b) {
        return _KXNaturalSortKey(a.c_str()) < _KXNaturalSortKey(b.c_str());
    });
    EXPECT_EQ(sorted, order);
    EXPECT_EQ(_KXNaturalSortKey("No. 007"), _KXNaturalSortKey("no. 7"));
    // Numbers longer than their length can say still come behind shorter ones.
    EXPECT_LT(_KXNaturalSortKey("9z"), _KXNaturalSortKey((std::string(300, '1') + "a").c_str()));
}

TEST(TextOrder, FoldsAndLooksUpInEveryScript) {
    const struct {
        const char *text, *typed;
        bool begins;
    } rows[] = {{"Sword", "sW", true},
                {"Sword", "", true},
                {"", "s", false},
                {"Sw", "sword", false},
                {"Sword", "w", false},
                {"\u00dcbung", "\u00fcB", true},
                {"\u0416\u0423\u041a", "\u0436\u0443", true},
                {"\u03a9mega", "\u03c9M", true},
                {"\u00e9t\u00e9", "e", false},
                {"\U00010400", "\U00010428", true}, // four bytes each
                {"\xff\xe2\x82", "??", true},
                {"100%", "100%", true}};
    for (const auto& [text, typed, begins] : rows)
        EXPECT_EQ(_KXBeginsWith(text, _KXFoldedText(typed).c_str()), begins) << text << " " << typed;
    EXPECT_EQ(_KXFoldedText("\u00c4\u20ac\U0001F3AE\xc3"), "\u00e4\u20ac\U0001F3AE?");
}
} // namespace
