#include "util/KXString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace {
struct Strings : testing::Test {
    ~Strings() override { _KXCleanTempStrings(); }
};

TEST_F(Strings, FormatCutAndStayApart) {
    EXPECT_EQ(KXTempString(nullptr), nullptr);
    const char* first = KXTempString("%d of %s", 7, "nine");
    const char* second = KXTempString("%s", std::string(2000, 'x').c_str());
    EXPECT_STREQ(first, "7 of nine");
    EXPECT_EQ(std::string(second), std::string(1023, 'x'));
    EXPECT_STREQ(KXTempString("%s", ""), "");
    _KXCleanTempStrings();
    _KXCleanTempStrings(); // an empty pool
    EXPECT_STREQ(KXTempString("again"), "again");
}

TEST_F(Strings, MakeStringIsTheCallersOwn) {
    EXPECT_EQ(_KXMakeString(0), nullptr);
    EXPECT_EQ(_KXMakeString(-4), nullptr);
    char* block = _KXMakeString(8);
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "");
    std::free(block);
}

TEST_F(Strings, TextFormsOfValues) {
    EXPECT_STREQ(KXPointToString({1.5f, -2}), "(1.500000, -2.000000)");
    EXPECT_STREQ(KXPointToStringi({1.9f, -1.9f}), "(1, -1)");
    EXPECT_STREQ(KXSizeToString({3, 4}), "(3.000000, 4.000000)");
    EXPECT_STREQ(KXSizeToStringi({3.99f, -0.5f}), "(3, 0)");
    EXPECT_STREQ(KXRectToString({{0, 0}, {10, 20}}), "{ (0.000000, 0.000000) : (10.000000, 20.000000) }");
    EXPECT_STREQ(KXRectToStringi({{-1.5f, 2.5f}, {10, 20}}), "{ (-1, 2) : (10, 20) }");
    // What an int cannot hold saturates.
    EXPECT_STREQ(KXPointToStringi({1e30f, -INFINITY}), "(2147483647, -2147483648)");
    EXPECT_STREQ(KXPointToStringi({NAN, -1e30f}), "(0, -2147483648)");
}

TEST_F(Strings, DirectionNames) {
    const char* expected[] = {"Unknown",   "None",       "Left",    "Up",       "Down",   "Right",
                              "Down Left", "Down Right", "Up Left", "Up Right", "Unknown"};
    for (int value = -2; value <= 8; ++value)
        EXPECT_STREQ(KXDirectionToString(static_cast<KXDirection>(value)), expected[value + 2]) << value;
}
} // namespace
