#include "util/KXString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace {
TEST(Strings, AreFormattedCutAndKeptUntilTheyAreCleaned) {
    EXPECT_EQ(KXTempString(nullptr), nullptr);
    const char* first = KXTempString("%d of %s", 7, "nine");
    EXPECT_EQ(KXTempString("%s", std::string(2000, 'x').c_str()), std::string(1023, 'x'));
    EXPECT_STREQ(first, "7 of nine");
    _KXCleanTempStrings();
    _KXCleanTempStrings(); // an empty pool
    EXPECT_STREQ(KXTempString("again"), "again");
    EXPECT_TRUE(!_KXMakeString(0) && !_KXMakeString(-4));
    char* own = _KXMakeString(8);
    _KXCleanTempStrings();
    EXPECT_STREQ(own, "");
    EXPECT_TRUE(_KXTextIn("a\0b", 3) == "a" && _KXTextIn("abc", 2) == "ab" && _KXTextIn("", 0).empty());
    std::free(own);
}

TEST(Strings, TextFormsOfValues) {
    EXPECT_STREQ(KXPointToString({1.5f, -2}), "(1.500000, -2.000000)");
    EXPECT_STREQ(KXPointToStringi({1.9f, -1.9f}), "(1, -1)");
    EXPECT_STREQ(KXSizeToString({3, 4}), "(3.000000, 4.000000)");
    EXPECT_STREQ(KXSizeToStringi({3.99f, -0.5f}), "(3, 0)");
    EXPECT_STREQ(KXRectToString({{0, 1}, {10, 20}}), "{ (0.000000, 1.000000) : (10.000000, 20.000000) }");
    EXPECT_STREQ(KXRectToStringi({{-1.5f, NAN}, {1e30f, -INFINITY}}),
                 "{ (-1, 0) : (2147483647, -2147483648) }");
    std::string names;
    for (int value = -2; value <= 8; ++value)
        names += KXDirectionToString(static_cast<KXDirection>(value)) + std::string("|");
    EXPECT_EQ(names, "Unknown|None|Left|Up|Down|Right|Down Left|Down Right|Up Left|Up Right|Unknown|");
    _KXCleanTempStrings();
}
} // namespace
