// kxsprite check, and what every command says about files that are none.

#include "Tool.h"

#include "support/Image.h"

#include <algorithm>
#include <cmath>

namespace {
using Check = Tool;
using CommandLine = Tool;

Image sheet(int width, int height) {
    return {width, height, std::vector<Pixel>(static_cast<std::size_t>(width * height), {9, 9, 9, 255})};
}

/// One frame of an animation, with everything before it.
std::string withFrame(int duration, float x, float y, int width, int height) {
    return spriteFile({"hero.png", 0, 1, "walk", 1, duration, x, y, width, height, 0});
}

TEST_F(Check, NamesTheFaultAndItsPlace) {
    const Fields box = {"b", 0.f, 0.f, 1, 1}, walk = {"w", 1, 1, 0.f, 0.f, 4, 4, 0};
    const std::pair<std::string, const char*> cases[] = {
        {hero, ""},
        {"KXSPRITE\2" + spriteFile({0, 0, 0}).substr(9), ""}, // a later version
        {"", "byte 0: the file is cut short in the word KXSPRITE"},
        {"KXSPR", "byte 0: the file is cut short in the word KXSPRITE"},
        {"KXSPRITf" + hero.substr(8), "byte 0: the file does not begin with KXSPRITE"},
        {"KXSPRITE\1", "byte 8: the file is cut short in the version"},
        {"KXSPRITE" + std::string(4, '\0'), "byte 8: the version is 0, less than 1"},
        {spriteFile({0x7FFFFFFF}) + "ab",
         "byte 12: the length of the texture's name is 2147483647, which the remaining 2 bytes cannot hold"},
        {spriteFile({-5}), "byte 12: the length of the texture's name is -5"},
        {spriteFile({""}), "byte 16: the file is cut short in the number of boxes"},
        {spriteFile(Fields{"", 2} + box), "byte 16: the number of boxes is 2, which"},
        {spriteFile({"", -1}), "byte 16: the number of boxes is -1, which"},
        {spriteFile(Fields{"", 2} + box + box + Fields{0}), "byte 41: there is already a box 'b'"},
        {spriteFile({"", 1, "b", NAN, 0.f, 1, 1, 0}),
         "byte 25: box 'b' has a position that is not a finite number"},
        {spriteFile({"", 0, 1000}), "byte 20: the number of animations is 1000"},
        {spriteFile({"", 0, 1, "w", 200000000, 0}),
         "byte 29: the number of frames of animation 'w' is 200000000, which the remaining 4 bytes"},
        {spriteFile({"", 0, 1, "w", 0, 0}), "byte 29: animation 'w' has no frames"},
        {spriteFile(Fields{"", 0, 2} + walk + walk), "byte 57: there is already an animation 'w'"},
        {spriteFile({"", 0, 1, std::string("w\0x", 3), 1, 1, 0.f, 0.f, 4, 4, 0}),
         "byte 28: an animation's name 'w\\x00x' holds a zero byte"},
        {hero.substr(0, 66), "byte 51: the number of animations is 1, which"},
        {hero.substr(0, 86), "byte 63: the number of frames of animation 'idle' is 1, which"},
        {hero.substr(0, 90), "byte 87: the file is cut short in the loops flag"},
        {hero + "x", "byte 91: 1 bytes follow the end"},
        {withFrame(1, 0, 0, 0, 8), "byte 44: animation 'walk', frame 0 has the size 0 x 8"},
        {withFrame(1, 0, 0, 8, -8), "byte 44: animation 'walk', frame 0 has the size 8 x -8"},
        {withFrame(-1, 0, 0, 8, 8), "byte 44: animation 'walk', frame 0 has the negative"},
        {withFrame(1, 24, 16, 8, 16), ""}, // fits the sheet
        {withFrame(1, 24.5f, 16, 8, 16),
         "byte 44: animation 'walk', frame 0 of 8 x 16 lies outside the sheet of 32 x 32"},
        {withFrame(1, 0, 17, 8, 16), "lies outside the sheet"},
        {withFrame(1, 0, -1, 8, 16), "lies outside the sheet"},
        {withFrame(1, -1, 0, 8, 16), "lies outside the sheet"},
        {withFrame(1, 0, 0, 0x7FFFFFFF, 1), "lies outside the sheet"},
    };
    sheet(32, 32).save(folder / "hero.png");
    for (const auto& [bytes, said] : cases) {
        folder.write("a.spr", bytes);
        const Outcome run = kxsprite("check a.spr");
        if (*said)
            expectFault(run, "a.spr", said);
        else
            EXPECT_EQ(run.output + std::to_string(run.status), "0");
    }
}

TEST_F(Check, TakesSeveralFilesAndLooksForSheetsBesideThem) {
    folder.write("whole.spr", hero);
    sheet(16, 16).save(folder / "hero.png");
    folder.write("cut.spr", hero.substr(0, 50));
    const Outcome run = kxsprite("check cut.spr whole.spr cut.spr whole.spr");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(std::ranges::count(run.output, '\n'), 2) << run.output;
    EXPECT_EQ(run.output.find("whole.spr"), std::string::npos);
    std::filesystem::create_directory(_KXFilePath(folder / "a folder"));
    folder.write("a folder/hero.spr", hero);
    expectFault(kxsprite("check 'a folder/hero.spr'"), "a folder/hero.spr", "a folder/hero.png' is missing");
    sheet(16, 15).save(folder / "a folder/hero.png");
    expectFault(kxsprite("check 'a folder/hero.spr'"), "a folder/hero.spr", "outside the sheet");
    folder.write("a folder/hero.png", "no picture");
    expectFault(kxsprite("check 'a folder/hero.spr'"), "a folder/hero.spr", "is no image");
}

TEST_F(CommandLine, EveryCommandSaysWhatItCannotRead) {
    folder.write("cut.spr", hero.substr(0, 50));
    for (const std::string command : {"info", "info --json", "check", "preview -o a.png", "make -o a.spr"}) {
        SCOPED_TRACE(command);
        expectFault(kxsprite(command + " missing"), "missing",
                    "cannot be opened: No such file or directory\n");
        expectFault(kxsprite(command + " ."), ".", "cannot be "); // opened, or read
        expectFault(kxsprite(command + " cut.spr"), "cut.spr", "");
    }
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(folder / "a.spr")));
}

TEST_F(CommandLine, RefusesWhatItDoesNotUnderstand) {
    for (const char* arguments :
         {"", "paint a", "info", "info a b", "info -o a b", "make a", "make a -o", "make a -o ''",
          "make a -o b --step-ms", "make a -o b --step-ms 0", "make a -o b --step-ms 1001",
          "make a -o b --step-ms 1x", "make a -o b --json", "check", "check --nonsense", "preview a",
          "preview a -o b --scale 17", "info a --step-ms 16"}) {
        const Outcome run = kxsprite(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.output.rfind("kxsprite: ", 0), 0u) << arguments << ": " << run.output;
    }
    for (const char* arguments : {"--help", "-h", "make --help"}) {
        const Outcome help = kxsprite(arguments);
        EXPECT_EQ(help.status, 0);
        EXPECT_NE(help.output.find("--step-ms N"), std::string::npos);
    }
    folder.write("--json", spriteFile({"", 0, 0}));
    EXPECT_EQ(kxsprite("check -- --json").status, 0);
    EXPECT_EQ(kxsprite("make b -o a --step-ms 1000").status, 1); // there is no b
}
} // namespace
