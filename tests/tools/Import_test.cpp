// kxsprite make from what Aseprite exports.

#include "Tool.h"

#include <array>
#include <tuple>

namespace {
using Import = Tool;

// Four frames of 156, 8, 100 and 1 milliseconds, 16 by 16 pixels side by side, with tags and slices. The
// frames' names do not follow the alphabet.
const std::string array = contentOf(EXPORTS "/array.json"), hash = contentOf(EXPORTS "/hash.json");

/// The array with something else in the place of its first such text.
std::string with(const std::string& text, const std::string& other) {
    std::string json = array;
    const std::size_t at = json.find(text);
    EXPECT_NE(at, std::string::npos) << text;
    return json.replace(at, text.size(), other);
}

/// The array with something else between two texts.
std::string between(const std::string& begin, const std::string& end, const std::string& other) {
    const std::size_t from = array.find(begin) + begin.size(), to = array.find(end, from);
    return array.substr(0, from) + other + array.substr(to);
}

/// Frames by their index in that row.
Fields animation(const char* name, const std::vector<int>& frames, int loops,
                 std::array<int, 4> durations = {10, 1, 6, 1}) {
    Fields fields = {name, static_cast<int>(frames.size())};
    for (const int i : frames)
        fields = fields +
                 Fields{durations[static_cast<std::size_t>(i)], 16.f * static_cast<float>(i), 0.f, 16, 16};
    return fields + Fields{loops};
}

TEST_F(Import, LaysOutTagsAndSlicesOfBothForms) {
    const std::string expected =
        spriteFile(Fields{"hero.png", 2, "Eye", -1.f, 0.f, 1, 1, "hit", 2.f, 3.f, 10, 20, 8} +
                   animation("back", {3, 2, 1, 0}, -1) + animation("ereht", {3, 2, 1, 0, 1, 2}, -1) +
                   animation("forward", {0, 1, 2, 3}, -1) + animation("once", {1, 2, 3}, 0) +
                   animation("once there", {1, 2, 3}, 0) + animation("one", {2}, -1) +
                   animation("there", {0, 1, 2, 3, 2, 1}, -1) + animation("two", {1, 2}, -1));
    for (const std::string& json : {array, hash}) {
        EXPECT_EQ(make(json).output, "");
        EXPECT_EQ(contentOf(folder / "a.spr"), expected) << kxsprite("info a.spr").output;
    }
}

TEST_F(Import, AFileWithoutTagsIsOneAnimation) {
    std::filesystem::create_directory(_KXFilePath(folder / "art.d"));
    for (const char* tags : {"", R"(, "frameTags": [])"}) {
        folder.write("art.d/big hero.json", between("\"hero.png\"", "\n }\n}", tags));
        EXPECT_EQ(kxsprite("make 'art.d/big hero.json' --step-ms 50 -o a.spr").output, "");
        EXPECT_EQ(
            contentOf(folder / "a.spr"),
            spriteFile(Fields{"hero.png", 0, 1} + animation("big hero", {0, 1, 2, 3}, -1, {3, 1, 2, 1})));
    }
}

TEST_F(Import, SaysWhatASpriteCannotDoAndTakesTheSheetByItsName) {
    for (const char* image : {"/home/me/art/hero.png", R"(C:\\art\\hero.png)", "../hero.png"}) {
        EXPECT_EQ(make(with("\"hero.png\"", '"' + std::string(image) + '"')).output, "");
        EXPECT_EQ(kxsprite("info a.spr").output.rfind("texture: hero.png\n", 0), 0u) << image;
    }
    const Outcome run = make(with(R"("repeat": "1")", R"("repeat": "3000")"));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output,
              "kxsprite: a.json: tag 'once' is played 3000 times, which is too long to be written "
              "down; it loops\n");
    EXPECT_NE(kxsprite("info a.spr").output.find("once: 3 frames, loop"), std::string::npos);
}

TEST_F(Import, RefusesWithTheOptionToChange) {
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {with(R"("trimmed": false)", R"("trimmed": true)"), "frame 'hero 9.ase' is trimmed", "--trim"},
        {with(R"("sourceSize": { "w": 16)", R"("sourceSize": { "w": 17)"), "is trimmed", "--trim"},
        {with(R"(Size": { "x": 0, "y": 0)", R"(Size": { "x": 0, "y": 2)"), "is trimmed", "--trim"},
        {with(R"("sourceSize": { "w": 16)", R"("sourceSize": { "w": 15)"), "is larger", "--inner-padding"},
        {with(R"("rotated": false)", R"("rotated": true)"), "frame 'hero 9.ase' is rotated", "--sheet-type"},
        {with(R"("rotated": false)", R"("rotated": 1)"), "'frames[0].rotated' must be true or false", ""},
        {with(R"("h": 20 }, "pivot")", R"("h": 21 }, "pivot")"), "slice 'hit' moves between",
         "--list-slices"},
        {between(R"("name": "hit", "color": "#0000ffff", "keys": [)", "] },", ""),
         "'meta.slices[0].keys' is empty", ""},
        {with(R"("to": 3)", R"("to": 4)"), "tag 'forward' covers the frames 0 to 4", "--ignore-empty"},
        {with(R"("from": 0)", R"("from": -1)"), "tag 'forward' covers the frames -1 to 3", ""},
        {with(R"("from": 2, "to": 2)", R"("from": 2, "to": 1)"), "tag 'one' covers the frames 2 to 1", ""},
        {with(R"("reverse")", R"("sideways")"), "is 'sideways'", "--list-tags"},
        {with(R"("there")", R"("back")"), "two tags", "--list-tags"},
        {with(R"("Eye")", R"("hit")"), "two slices", "--list-slices"},
        {with(R"("repeat": "1")", R"("repeat": "often")"), "must be a text of digits", ""},
        {R"({"frames": {"a": {}, "a": {}}})", "the key 'a' occurs twice", "--filename-format"},
        {R"({"frames": [], "meta": {}})", "has no frames", "--ignore-empty"},
        {with(R"("duration": 156)", R"("duration": -1)"), "'frames[0].duration' is negative", ""},
        {with(R"("image")", R"("picture")"), "names no picture", "--sheet"},
    };
    for (const auto& [json, said, option] : cases) {
        const Outcome run = make(json);
        expectFault(run, "a.json", said);
        EXPECT_NE(run.output.find(option), std::string::npos) << run.output;
    }
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(folder / "a.spr")));
}
} // namespace
