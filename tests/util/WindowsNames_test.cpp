// What Windows calls a name is known on every system.

#include "platform/WindowsNames.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {
TEST(WindowsNames, WhatFilesCanBeCalled) {
    for (const char* path : {"",          "a",
                             "a/b.txt",   "a\\b",
                             "/a",        "//host/share/a",
                             "C:/a",      "c:a",
                             "z:",        ".",
                             "../a/./..", ".a",
                             "a b",       "-rf",
                             "console",   "com",
                             "com10",     "com0.txt",
                             "lpt\u2074", "nullptr",
                             "aconin$",   "s\u00fc\U0001F3AE/%n",
                             "//./nul",   "\\\\?\\C:\\a:b ",
                             "//?/con"}) {
        EXPECT_FALSE(_KXFaultOfWindowsPath(path)) << path;
        EXPECT_EQ(_KXMarkWindowsPath(path), path);
    }
    const auto owls = [](int count) { // each two units of UTF-16
        std::string name;
        while (count-- > 0)
            name += "\U0001F989";
        return name;
    };
    for (const std::string& longest : {std::string(255, 'n'), owls(127) + "\u00e9"}) {
        EXPECT_FALSE(_KXFaultOfWindowsPath("C:/" + longest + "/" + longest)) << longest;
        const std::string message = _KXFaultOfWindowsPath("C:/" + longest + "n/a").message();
        EXPECT_NE(message.find("longer than 255"), std::string::npos) << message;
    }
}

TEST(WindowsNames, WhatTheyCannotBeCalled) {
    const struct {
        const char* said;
        std::initializer_list<const char*> names;
    } faults[] = {
        {"a name has to be UTF-8",
         {"\x80", "\xC1\xBF", "\xC3", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
          "\xF5\x80\x80\x80", "\xE2\x82g"}},
        {"no name can hold",
         {"ab:c", "C:D:", "1:", "a<", ">", "\"", "a|b", "?", "*.txt", "\x1f", "a\n", "NUL:"}},
        {"are devices",
         {"CON", "prn", "Aux.txt", "nul .a.b", "COM1", "lpt9.", "com\u00b9", "LPT\u00b3.x", "conIn$",
          "CONOUT$", "con "}},
        {"end with a dot or a blank", {"a.", "...", " ", "a ", "com0 ", ". "}},
    };
    for (const auto& [said, names] : faults)
        for (const std::string name : names)
            for (const std::string& path : {name, "C:/a/" + name, "a\\" + name + "/b"}) {
                const std::string message = _KXFaultOfWindowsPath(path).message();
                EXPECT_NE(message.find(said), std::string::npos) << path << ": " << message;
            }
}

TEST(WindowsNames, AreMarkedSoThatTheSystemRefusesThem) {
    const char* const pairs[][2] = {{"NUL", "|NUL"},
                                    {"C:aux/b/c:d", "C:|aux/b/|c:d"},
                                    {"//a /b//\xFF", "//|a /b//|\xFF"},
                                    {"|a/x|", "||a/|x|"},
                                    {"a/../con.txt/", "a/../|con.txt/"}};
    for (const auto& [path, marked] : pairs) {
        EXPECT_EQ(_KXMarkWindowsPath(path), marked);
        EXPECT_EQ(_KXUnmarkWindowsPath(marked), path);
    }
    EXPECT_EQ(_KXUnmarkWindowsPath("\\\\a\\|nul\\b"), "//a/nul/b");
}
} // namespace
