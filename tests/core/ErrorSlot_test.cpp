#include "core/ground/ErrorSlot.h"

#include <Kobaltrix/KXCore.h>

#include <gtest/gtest.h>

#include <string>

namespace {
TEST(ErrorSlot, KeepsTheLastMessageCutToItsSize) {
    _KXClearError();
    EXPECT_STREQ(KXError(), "");
    _KXSetError("%s %d", "first", 1);
    _KXSetError("%d", 2);
    EXPECT_STREQ(KXError(), "2");
    _KXSetError("%s", std::string(600, 'x').c_str());
    EXPECT_EQ(std::string(KXError()), std::string(511, 'x'));
    _KXReportError("%s", std::string(5000, 'y').c_str());
    EXPECT_EQ(std::string(KXError()), std::string(511, 'y'));
    _KXSetError(nullptr);
    EXPECT_STREQ(KXError(), "");
}

TEST(ErrorSlot, ReportsAreFormattedTwiceWithoutReadingArguments) {
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"plain", "plain"},
        {"100%% sure", "100% sure"},
        {"%s%n%d", "%s%n%d"},
        {"50% and more", "50% and more"},
        {"ends in %", "ends in %"},
        {"%%%%s", "%%s"},
        {"%%%", "%%"},
        {"%*.*s %99999999d", "%*.*s %99999999d"},
        {"", ""},
    };
    for (const auto& [text, expected] : cases) {
        _KXReportError("%s", text);
        EXPECT_STREQ(KXError(), expected);
    }
}

TEST(ErrorSlot, FormattingWithoutArgumentsStaysInItsBuffer) {
    char buffer[8] = "intact!";
    _KXFormatWithoutArguments(buffer, 0, "text");
    EXPECT_STREQ(buffer, "intact!");
    _KXFormatWithoutArguments(buffer, 4, "%%%%%%%%");
    EXPECT_STREQ(buffer, "%%%");
    EXPECT_EQ(buffer[4], 'c');
    _KXFormatWithoutArguments(buffer, 1, "text");
    EXPECT_STREQ(buffer, "");
}
} // namespace
