// kxsprite check, and what every command says about files that are none.

#include "Tool.h"

#include "support/Image.h"

#include <algorithm>
#include <cmath>

namespace {
Image sheet(int width, int height) {
    return {width, height, std::vector<Pixel>(static_cast<std::size_t>(width * height), {9, 9, 9, 255})};
}

/// One frame of an animation, with everything before it.
Bytes withFrame(int duration, float x, float y, int width, int height) {
    return Bytes::head("hero.png")
        .number(0)
        .number(1)
        .name("walk")
        .number(1)
        .number(duration)
        .area(x, y, width, height)
        .number(0);
}

TEST(Check, NamesTheFaultAndItsPlace) {
    const Bytes hero = heroSprite();
    ASSERT_EQ(hero.size(), 91u);
    const Bytes none = Bytes::head("");
    const Bytes box = Bytes().name("b").area(0, 0, 1, 1),
                walk = Bytes().name("w").number(1).number(1).area(0, 0, 4, 4).number(0);
    const struct {
        const char* what;
        std::string bytes;
        const char* said; ///< "" for nothing.
    } cases[] = {
        {"sound", hero, ""},
        {"later version", Bytes().raw("KXSPRITE").number(2).number(0).number(0).number(0), ""},
        {"empty", "", "byte 0: the file is cut short in the word KXSPRITE"},
        {"short magic", "KXSPR", "byte 0: the file is cut short in the word KXSPRITE"},
        {"other magic", "KXSPRITf" + hero.substr(8), "byte 0: the file does not begin with KXSPRITE"},
        {"no version", "KXSPRITE\1", "byte 8: the file is cut short in the version"},
        {"version 0", Bytes().raw("KXSPRITE").number(0), "byte 8: the version is 0, less than 1"},
        {"long texture", Bytes().raw("KXSPRITE").number(1).number(0x7FFFFFFF).raw("ab"),
         "byte 12: the length of the texture's name is 2147483647, which the remaining 2 bytes cannot hold"},
        {"negative length", Bytes().raw("KXSPRITE").number(1).number(-5),
         "byte 12: the length of the texture's name is -5"},
        {"no boxes", none, "byte 16: the file is cut short in the number of boxes"},
        {"many boxes", Bytes(none).number(2).raw(box), "byte 16: the number of boxes is 2, which"},
        {"negative boxes", Bytes(none).number(-1), "byte 16: the number of boxes is -1, which"},
        {"same box", Bytes(none).number(2).raw(box + box).number(0), "byte 41: there is already a box 'b'"},
        {"box nowhere", Bytes(none).number(1).name("b").real(NAN).real(0).number(1).number(1).number(0),
         "byte 25: box 'b' has a position that is not a finite number"},
        {"many animations", Bytes(none).number(0).number(1000), "byte 20: the number of animations is 1000"},
        {"many frames", Bytes(none).number(0).number(1).name("w").number(200000000).number(0),
         "byte 29: the number of frames of animation 'w' is 200000000, which the remaining 4 bytes"},
        {"no frames", Bytes(none).number(0).number(1).name("w").number(0).number(0),
         "byte 29: animation 'w' has no frames"},
        {"same animation", Bytes(none).number(0).number(2).raw(walk + walk),
         "byte 57: there is already an animation 'w'"},
        {"zero byte",
         Bytes(none)
             .number(0)
             .number(1)
             .name(std::string("w\0x", 3))
             .number(1)
             .number(1)
             .area(0, 0, 4, 4)
             .number(0),
         "byte 28: an animation's name 'w\\x00x' holds a zero byte"},
        {"cut in the end", hero.substr(0, 90), "byte 87: the file is cut short in the loops flag"},
        {"one too many", hero + "x", "byte 91: 1 bytes follow the end"},
        {"zero width", withFrame(1, 0, 0, 0, 8), "byte 44: animation 'walk', frame 0 has the size 0 x 8"},
        {"negative height", withFrame(1, 0, 0, 8, -8),
         "byte 44: animation 'walk', frame 0 has the size 8 x -8"},
        {"negative duration", withFrame(-1, 0, 0, 8, 8),
         "byte 44: animation 'walk', frame 0 has the negative"},
        {"fits the sheet", withFrame(1, 24, 16, 8, 16), ""},
        {"right of the sheet", withFrame(1, 24.5f, 16, 8, 16),
         "byte 44: animation 'walk', frame 0 of 8 x 16 lies outside the sheet of 32 x 32"},
        {"below the sheet", withFrame(1, 0, 17, 8, 16), "lies outside the sheet"},
        {"above the sheet", withFrame(1, 0, -1, 8, 16), "lies outside the sheet"},
        {"larger than a float", withFrame(1, 0, 0, 0x7FFFFFFF, 1), "lies outside the sheet"},
    };
    const TemporaryFolder folder;
    sheet(32, 32).save(folder / "hero.png");
    for (const auto& [what, bytes, said] : cases) {
        folder.write("a.spr", bytes);
        const Outcome run = kxsprite(folder, "check a.spr");
        EXPECT_EQ(run.status, *said ? 1 : 0) << what;
        if (!*said)
            EXPECT_EQ(run.output, "") << what;
        else
            EXPECT_EQ(run.output.rfind("kxsprite: a.spr: byte ", 0), 0u) << what << ": " << run.output;
        EXPECT_NE(run.output.find(said), std::string::npos) << what << ": " << run.output;
    }
}

TEST(Check, FindsAFaultWhereverTheFileIsCut) {
    const TemporaryFolder folder;
    const Bytes hero = heroSprite();
    std::string files;
    for (std::size_t length = 0; length < hero.size(); ++length) {
        folder.write(std::to_string(length) + ".spr", hero.substr(0, length));
        files.append(" ").append(std::to_string(length)).append(".spr");
    }
    folder.write("whole.spr", hero);
    const Outcome run = kxsprite(folder, "check whole.spr" + files);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 91) << run.output;
    EXPECT_EQ(run.output.find("whole.spr"), std::string::npos);
}

TEST(Check, SheetsAreLookedForBesideTheFile) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "a folder");
    folder.write("a folder/hero.spr", heroSprite());
    EXPECT_EQ(kxsprite(folder, "check 'a folder/hero.spr'").status, 0) << "no sheet, no fault";
    sheet(16, 15).save(folder / "a folder/hero.png");
    EXPECT_EQ(kxsprite(folder, "check 'a folder/hero.spr'").status, 1);
    folder.write("a folder/hero.png", "no picture");
    EXPECT_NE(kxsprite(folder, "check 'a folder/hero.spr'").output.find("is no image"), std::string::npos);
}

TEST(CommandLine, EveryCommandSaysWhatItCannotRead) {
    const TemporaryFolder folder;
    folder.write("cut.spr", heroSprite().substr(0, 50));
    for (const std::string command : {"info", "info --json", "check", "preview -o a.png", "make -o a.spr"}) {
        const Outcome run = kxsprite(folder, command + " missing");
        EXPECT_EQ(run.status, 1) << command;
        EXPECT_EQ(run.output, "kxsprite: missing: cannot be opened: No such file or directory\n") << command;
        EXPECT_EQ(kxsprite(folder, command + " .").status, 1) << command;
        const Outcome cut = kxsprite(folder, command + " cut.spr");
        EXPECT_EQ(cut.status, 1) << command;
        EXPECT_EQ(cut.output.rfind("kxsprite: cut.spr: ", 0), 0u) << cut.output;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "a.spr"));
}

TEST(CommandLine, RefusesWhatItDoesNotUnderstand) {
    const TemporaryFolder folder;
    for (const char* arguments :
         {"", "paint a", "info", "info a b", "info -o a b", "make a", "make a -o", "make a -o ''",
          "make a -o b --step-ms", "make a -o b --step-ms 0", "make a -o b --step-ms 1001",
          "make a -o b --step-ms 1x", "make a -o b --json", "check", "check --nonsense", "preview a",
          "preview a -o b --step-ms 16"}) {
        const Outcome run = kxsprite(folder, arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.output.rfind("kxsprite: ", 0), 0u) << arguments << ": " << run.output;
    }
    for (const char* arguments : {"--help", "-h", "make --help"}) {
        const Outcome help = kxsprite(folder, arguments);
        EXPECT_EQ(help.status, 0);
        EXPECT_NE(help.output.find("--step-ms N"), std::string::npos);
    }
    folder.write("--json", heroSprite());
    EXPECT_EQ(kxsprite(folder, "check -- --json").status, 0);
}
} // namespace
