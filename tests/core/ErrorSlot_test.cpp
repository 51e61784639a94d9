#include "core/ground/ErrorSlot.h"

#include <Kobaltrix/KXError.h>

#include <gtest/gtest.h>

#include <string>

namespace {
TEST(ErrorSlot, KeepsTheLastMessageCutToItsSize) {
    _KXSetError("%s %d", "first", 1);
    _KXSetError("%s", std::string(600, 'x').c_str());
    EXPECT_EQ(KXError(), std::string(511, 'x'));
    _KXReportError("%s", std::string(5000, 'y').c_str());
    EXPECT_EQ(KXError(), std::string(511, 'y'));
    _KXSetError(nullptr);
    EXPECT_STREQ(KXError(), "");
}

TEST(ErrorSlot, ReportsAreFormattedTwiceWithoutReadingArguments) {
    const char* const rows[][2] = {{"100%% sure", "100% sure"}, {"%s%n%d", "%s%n%d"},
                                   {"50% and", "50% and"},      {"%%%%s", "%%s"},
                                   {"%%% more%", "%% more%"},   {"%*.*s", "%*.*s"}};
    for (const auto& [text, expected] : rows) {
        _KXReportError("%s", text);
        EXPECT_STREQ(KXError(), expected);
    }
    char buffer[8] = "intact!";
    _KXFormatWithoutArguments(buffer, 0, "text");
    EXPECT_STREQ(buffer, "intact!");
    _KXFormatWithoutArguments(buffer, 4, "%%%%%%%%");
    EXPECT_EQ(std::string(buffer, 8), std::string("%%%\0ct!\0", 8));
}
} // namespace
