// kxsprite info and kxsprite make: a sprite file as JSON and back.

#include "Tool.h"

#include "support/Image.h"

#include <climits>
#include <cmath>
#include <tuple>

namespace {
using Make = Tool;

TEST_F(Make, JsonBecomesTheBytesItCameFrom) {
    const Fields names = Fields{"h\u00e9ro \U0001F3AE.png", 2, "", 0.1f, -1e-30f, -3, 0} +
                         Fields{"say \"\\\n", 16777217.f, 3.4e38f, 1, INT_MAX, 2} +
                         Fields{"Run", 2, 0, 0.f, 0.f, 1, 1, INT_MAX, 0.f, 0.f, 1, 1, 7} +
                         Fields{"jump", 1, 0, 0.f, 0.f, 1, 1, 0};
    const std::string cases[] = {hero, spriteFile({"", 0, 0}), spriteFile(names)};
    for (const std::string& bytes : cases) {
        folder.write("in.spr", bytes);
        const Outcome json = kxsprite("info --json in.spr");
        EXPECT_EQ(json.status, 0) << json.output;
        EXPECT_EQ(make(json.output).output, "");
        EXPECT_EQ(contentOf(folder / "a.spr"), bytes) << json.output;
    }
}

TEST_F(Make, CellsOfAGridAreFrames) {
    const Outcome run = make(R"({"kxsprite": 1,
        "grid": {"x": 1, "y": 0.5, "width": 8, "height": 6, "gapX": 2, "gapY": 1, "columns": 3},
        "animations": [
            {"name": "own", "grid": {"width": 16, "height": 20}, "row": 1, "cells": [4], "duration": 7},
            {"name": "two rows", "loops": 0, "row": 1, "cells": [0, 2, 3, 2], "duration": [5, 4, 0, 4]}]})");
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(contentOf(folder / "a.spr"),
              spriteFile(Fields{"", 0, 2, "own", 1, 7, 64.f, 20.f, 16, 20, -1, "two rows", 4} +
                         Fields{5, 1.f, 7.5f, 8, 6, 4, 21.f, 7.5f, 8, 6, 0, 1.f, 14.5f, 8, 6} +
                         Fields{4, 21.f, 7.5f, 8, 6, 0}));
}

TEST_F(Make, InfoIsForPeopleOrSaysWhatJsonCannot) {
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"info", hero,
         "texture: hero.png\nanimations: 1\n  idle: 1 frame, loop, full size 16 x 16, durations 5\n"
         "boxes: 1\n  hit: at 2, 3, 10 x 20\n"},
        {"info", spriteFile({"", 0, 1, "a\033[2J", 2, 1, 0.f, 0.f, 10, 40, 2, 0.f, 0.f, 30, 20, 0}),
         "texture: none\nanimations: 1\n  a\\x1b[2J: 2 frames, once, full size 30 x 40, durations 1 2\n"
         "boxes: 0\n"},
        {"info --json", spriteFile({"\xFF.png", 0, 0}),
         "kxsprite: a.spr: a name is not UTF-8, which JSON cannot say\n"},
        {"info --json", spriteFile({"", 1, "b", INFINITY, 0.f, 1, 1, 0}),
         "kxsprite: a.spr: a position is not a finite number, which JSON cannot say; see kxsprite check\n"},
    };
    for (const auto& [command, bytes, output] : cases) {
        folder.write("a.spr", bytes);
        const Outcome run = kxsprite(std::string(command) + " a.spr");
        EXPECT_EQ(run.output, output);
        EXPECT_EQ(run.status, run.output.starts_with("kxsprite: ") ? 1 : 0);
    }
}

TEST_F(Make, MistakesInJsonAreNamed) {
    const auto box = [](const std::string& rest) {
        return R"({"kxsprite": 1, "boxes": [{"name": "a", "x": )" + rest + "]}";
    };
    const auto cells = [](const std::string& grid, const std::string& rest) {
        return R"({"kxsprite": 1, "texture": "sheet.png", )" +
               (grid.empty() ? "" : R"("grid": {)" + grid + "}, ") + R"("animations": [{"name": "a", )" +
               rest + "}]}";
    };
    const std::pair<std::string, const char*> cases[] = {
        {"", "is no valid JSON"},
        {"{\"kxsprite\": 1,}", "is no valid JSON: parse error at line 1"},
        {"[]", "must be an object"},
        {"{}", "is JSON neither of kxsprite info --json nor of an Aseprite export"},
        {R"({"kxsprite": 2})", "'kxsprite' must be 1"},
        {R"({"kxsprite": 1, "kxsprite": 1})", "'kxsprite' occurs twice"},
        {R"({"kxsprite": 1, "box": []})", "the key 'box' is not known"},
        {R"({"kxsprite": 1, "texture": 5})", "'texture' must be a text"},
        {R"({"kxsprite": 1, "texture": "a\u0000b"})", "'texture' holds a zero byte"},
        {R"({"kxsprite": 1, "boxes": {}})", "'boxes' must be an array"},
        {box(R"(0, "y": "0", "width": 1, "height": 1})"), "'boxes[0].y' must be a number"},
        {box(R"(0, "y": 0, "width": 1.5, "height": 1})"), "'boxes[0].width' must be a whole number"},
        {box(R"(0, "y": 0, "width": 1, "height": 2147483648})"), "'boxes[0].height' is too large a number"},
        {box(R"(0, "y": 0, "width": -2147483649, "height": 1})"), "'boxes[0].width' is too large a number"},
        {box(R"(1e99, "y": 0, "width": 1, "height": 1})"), "number"},
        {box(R"(0, "y": 0, "width": 1, "height": 1}, {"name": "a", "x": 0, "y": 0, "width": 1, "height": 1})"),
         "'boxes[1]' has the name of another box"},
        {R"({"kxsprite": 1, "animations": [{"name": "a", "frames": []}]})", "'animations[0]' has no frames"},
        {R"({"kxsprite": 1, "animations": [{"name": "a", "loop": 1, "frames": []}]})",
         "'animations[0]' has the key 'loop'"},
        {R"({"kxsprite": 1, "animations": [{"name": "a", "frames": [{"duration": 1}]}]})",
         "'animations[0].frames[0].x' is missing"},
        {cells("", R"("cells": [0], "duration": 1)"), "'animations[0]' has cells, but there is no grid"},
        {cells(R"("width": 4)", R"("cells": [0], "duration": 1)"), "'grid.height' is missing"},
        {cells(R"("width": 0, "height": 1)", R"("cells": [0], "duration": 1)"), "'grid.width' must be at"},
        {cells(R"("width": 1, "height": 1, "gap": 1)", R"("cells": [0])"), "'grid' has the key 'gap'"},
        {cells(R"("width": 1, "height": 1)", R"("cells": [-1], "duration": 1)"),
         "'animations[0].cells[0]' must be at least 0"},
        {cells(R"("width": 1, "height": 1)", R"("cells": [0, 1], "duration": [1])"),
         "'animations[0].duration' must be a number, or as many as there are cells"},
        {cells(R"("width": 1, "height": 1)", R"("cells": [], "duration": 1)"), "has no frames"},
        {cells(R"("width": 1, "height": 1)", R"("cells": [0], "duration": -1)"),
         "animation 'a', frame 0 has the negative duration -1"},
        {cells(R"("width": 8, "height": 8)", R"("cells": [0, 4], "duration": 1)"),
         "animation 'a', frame 1 of 8 x 8 lies outside the sheet of 32 x 16"},
        {cells(R"("width": 8, "height": 8)", R"("cells": [0], "frames": [])"), "has the key 'frames'"},
    };
    Image{32, 16, std::vector<Pixel>(512)}.save(folder / "sheet.png");
    for (const auto& [json, said] : cases)
        expectFault(make(json), "a.json", said);
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(folder / "a.spr")));
}

TEST_F(Make, SaysWhenTheSpriteCannotBeWritten) {
    folder.write("a.json", R"({"kxsprite": 1})");
    expectFault(kxsprite("make a.json -o no/such/folder.spr"), "no/such/folder.spr", "cannot be written: ");
}
} // namespace
