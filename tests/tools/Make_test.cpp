// kxsprite info and kxsprite make: a sprite file as JSON and back.

#include "Tool.h"

#include <cmath>

namespace {
TEST(Make, JsonBecomesTheBytesItCameFrom) {
    const std::pair<const char*, std::string> cases[] = {
        {"hero", heroSprite()},
        {"nothing", Bytes::head("").number(0).number(0)},
        {"names", Bytes::head("h\u00e9ro \U0001F3AE.png")
                      .number(2)
                      .name("")
                      .area(0.1f, -1e-30f, -3, 0)
                      .name("say \"\\\n")
                      .area(16777217.f, 3.4e38f, 1, 2147483647)
                      .number(2)
                      .name("Run")
                      .number(2)
                      .number(-2147483647 - 1)
                      .area(0, 0, 1, 1)
                      .number(2147483647)
                      .area(0, 0, 1, 1)
                      .number(7)
                      .name("jump")
                      .number(1)
                      .number(0)
                      .area(0, 0, 1, 1)
                      .number(0)},
    };
    const TemporaryFolder folder;
    for (const auto& [what, bytes] : cases) {
        folder.write("in.spr", bytes);
        const Outcome json = kxsprite(folder, "info --json in.spr");
        EXPECT_EQ(json.status, 0) << what << ": " << json.output;
        folder.write("a.json", json.output);
        const Outcome made = kxsprite(folder, "make a.json -o out.spr");
        EXPECT_EQ(made.output, "") << what;
        EXPECT_EQ(contentOf(folder / "out.spr"), bytes) << what << ": " << json.output;
    }
}

TEST(Make, InfoIsForPeople) {
    const TemporaryFolder folder;
    folder.write("hero.spr", heroSprite());
    EXPECT_EQ(kxsprite(folder, "info hero.spr").output,
              "texture: hero.png\n"
              "animations: 1\n"
              "  idle: 1 frame, loop, full size 16 x 16, durations 5\n"
              "boxes: 1\n"
              "  hit: at 2, 3, 10 x 20\n");
    folder.write("b.spr", Bytes::head("")
                              .number(0)
                              .number(1)
                              .name("a\033[2J")
                              .number(2)
                              .number(1)
                              .area(0, 0, 10, 40)
                              .number(2)
                              .area(0, 0, 30, 20)
                              .number(0));
    EXPECT_EQ(kxsprite(folder, "info b.spr").output,
              "texture: none\n"
              "animations: 1\n"
              "  a\\x1b[2J: 2 frames, once, full size 30 x 40, durations 1 2\n"
              "boxes: 0\n");
}

TEST(Make, WhatJsonCannotSayIsRefused) {
    const TemporaryFolder folder;
    folder.write("a.spr", Bytes::head("\xFF.png").number(0).number(0));
    EXPECT_EQ(kxsprite(folder, "info --json a.spr").output,
              "kxsprite: a.spr: a name is not UTF-8, which JSON cannot say\n");
    folder.write("a.spr", Bytes::head("").number(1).name("b").area(INFINITY, 0, 1, 1).number(0));
    EXPECT_NE(kxsprite(folder, "info --json a.spr").output.find("not a finite number"), std::string::npos);
    EXPECT_EQ(kxsprite(folder, "info --json a.spr").status, 1);
}

TEST(Make, MistakesInJsonAreNamed) {
    const std::pair<const char*, const char*> cases[] = {
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
        {R"({"kxsprite": 1, "boxes": [{"name": "a", "x": 0, "y": "0", "width": 1, "height": 1}]})",
         "'boxes[0].y' must be a number"},
        {R"({"kxsprite": 1, "boxes": [{"name": "a", "x": 0, "y": 0, "width": 1.5, "height": 1}]})",
         "'boxes[0].width' must be a whole number"},
        {R"({"kxsprite": 1, "boxes": [{"name": "a", "x": 0, "y": 0, "width": 1, "height": 2147483648}]})",
         "'boxes[0].height' is too large a number"},
        {R"({"kxsprite": 1, "boxes": [{"name": "a", "x": 1e99, "y": 0, "width": 1, "height": 1}]})",
         "number"},
        {R"({"kxsprite": 1, "boxes": [{"name": "a", "x": 0, "y": 0, "width": 1, "height": 1},
                                      {"name": "a", "x": 0, "y": 0, "width": 1, "height": 1}]})",
         "'boxes[1]' has the name of another box"},
        {R"({"kxsprite": 1, "animations": [{"name": "a", "frames": []}]})", "'animations[0]' has no frames"},
        {R"({"kxsprite": 1, "animations": [{"name": "a", "loop": 1, "frames": []}]})",
         "'animations[0]' has the key 'loop'"},
        {R"({"kxsprite": 1, "animations": [{"name": "a", "frames": [{"duration": 1}]}]})",
         "'animations[0].frames[0].x' is missing"},
    };
    const TemporaryFolder folder;
    for (const auto& [json, said] : cases) {
        folder.write("a.json", json);
        const Outcome run = kxsprite(folder, "make a.json -o a.spr");
        EXPECT_EQ(run.status, 1) << json;
        EXPECT_EQ(run.output.rfind("kxsprite: a.json: ", 0), 0u) << run.output;
        EXPECT_NE(run.output.find(said), std::string::npos) << json << "\n" << run.output;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "a.spr"));
}

TEST(Make, SaysWhenTheSpriteCannotBeWritten) {
    const TemporaryFolder folder;
    folder.write("a.json", R"({"kxsprite": 1})");
    const Outcome nowhere = kxsprite(folder, "make a.json -o no/such/folder.spr");
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.output.rfind("kxsprite: no/such/folder.spr: cannot be written: ", 0), 0u)
        << nowhere.output;
    EXPECT_EQ(kxsprite(folder, "make a.json -o /dev/null").output,
              "kxsprite: /dev/null: is no file that a sprite can be written to\n");
    const Outcome full = kxsprite(folder, "make a.json -o a.spr", "trap '' XFSZ; ulimit -f 0;");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.output, "kxsprite: a.spr: could not be written whole\n");
    folder.write("a.spr", heroSprite());
    if (std::filesystem::exists("/dev/full")) {
        EXPECT_EQ(kxsprite(folder, "info --json a.spr > /dev/full").status, 1);
    }
}
} // namespace
