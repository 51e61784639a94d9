// kxsprite make from what Aseprite exports.

#include "Tool.h"

#include <array>
#include <initializer_list>

namespace {
/// A frame of 16 by 16 pixels, number `index` of its row on the sheet, as Aseprite writes it.
std::string frame(int index, int milliseconds,
                  const std::string& more = R"("rotated": false, "trimmed": false,
    "spriteSourceSize": {"x": 0, "y": 0, "w": 16, "h": 16}, "sourceSize": {"w": 16, "h": 16})") {
    return R"("frame": {"x": )" + std::to_string(16 * index) + R"(, "y": 0, "w": 16, "h": 16}, )" + more +
           R"(, "duration": )" + std::to_string(milliseconds);
}

std::string meta(const std::string& more, const std::string& image = "hero.png") {
    return R"("meta": {"app": "https://www.aseprite.org/", "version": "1.3", "image": ")" + image +
           R"(", "format": "RGBA8888", "size": {"w": 64, "h": 16}, "scale": "1")" + more + "}";
}

/// Four frames of 160, 8, 100 and 1 milliseconds; the frames' names do not follow the alphabet.
std::string hash(const std::string& more) {
    return R"({"frames": {"hero 9.ase": {)" + frame(0, 160) + R"(}, "hero 10.ase": {)" + frame(1, 8) +
           R"(}, "hero 11.ase": {)" + frame(2, 100) + R"(}, "a": {)" + frame(3, 1) + "}}, " + meta(more) +
           "}";
}

std::string array(const std::string& more) {
    return R"({"frames": [{"filename": "9", )" + frame(0, 160) + R"(}, {"filename": "9", )" + frame(1, 8) +
           R"(}, {"filename": "9", )" + frame(2, 100) + R"(}, {"filename": "9", )" + frame(3, 1) + "}], " +
           meta(more) + "}";
}

std::string tag(const std::string& name, int from, int to, const std::string& direction,
                const std::string& more = "") {
    return R"({"name": ")" + name + R"(", "from": )" + std::to_string(from) + R"(, "to": )" +
           std::to_string(to) + R"(, "direction": ")" + direction + R"(", "color": "#000000ff")" + more + "}";
}

/// Frames by their index in that row.
Bytes animation(const std::string& name, std::initializer_list<int> frames, int loops,
                std::array<int, 4> durations = {10, 1, 6, 1}) {
    Bytes bytes = Bytes().name(name).number(static_cast<std::int64_t>(frames.size()));
    for (const int i : frames)
        bytes.number(durations[static_cast<std::size_t>(i)]).area(16.f * static_cast<float>(i), 0, 16, 16);
    return bytes.number(loops);
}

TEST(Import, LaysOutTagsAndSlicesOfBothForms) {
    const std::string more = R"(, "frameTags": [)" + tag("forward", 0, 3, "forward") + "," +
                             tag("back", 0, 3, "reverse") + "," + tag("there", 0, 3, "pingpong") + "," +
                             tag("ereht", 0, 3, "pingpong_reverse") + "," + tag("one", 2, 2, "pingpong") +
                             "," + tag("two", 1, 2, "pingpong") + "," +
                             tag("once", 1, 3, "forward", R"(, "repeat": "1")") + "," +
                             tag("once there", 1, 3, "pingpong", R"(, "repeat": "1")") +
                             R"(], "layers": [], "slices": [{"name": "hit", "color": "#0000ffff", "keys": [
            {"frame": 0, "bounds": {"x": 2, "y": 3, "w": 10, "h": 20}},
            {"frame": 2, "bounds": {"x": 2, "y": 3, "w": 10, "h": 20}, "pivot": {"x": 0, "y": 0}}]},
            {"name": "Eye", "color": "#0000ffff", "keys": [
            {"frame": 0, "bounds": {"x": -1, "y": 0, "w": 1, "h": 1}}]}])";
    const Bytes expected = Bytes::head("hero.png")
                               .number(2)
                               .name("Eye")
                               .area(-1, 0, 1, 1)
                               .name("hit")
                               .area(2, 3, 10, 20)
                               .number(8)
                               .raw(animation("back", {3, 2, 1, 0}, -1))
                               .raw(animation("ereht", {3, 2, 1, 0, 1, 2}, -1))
                               .raw(animation("forward", {0, 1, 2, 3}, -1))
                               .raw(animation("once", {1, 2, 3}, 0))
                               .raw(animation("once there", {1, 2, 3, 2, 1}, 0))
                               .raw(animation("one", {2}, -1))
                               .raw(animation("there", {0, 1, 2, 3, 2, 1}, -1))
                               .raw(animation("two", {1, 2}, -1));
    const TemporaryFolder folder;
    for (const std::string& json : {array(more), hash(more)}) {
        folder.write("hero.json", json);
        EXPECT_EQ(kxsprite(folder, "make hero.json -o hero.spr").output, "");
        EXPECT_EQ(contentOf(folder / "hero.spr"), expected) << kxsprite(folder, "info hero.spr").output;
    }
}

TEST(Import, AFileWithoutTagsIsOneAnimation) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "art.d");
    for (const char* more : {"", R"(, "frameTags": [])"}) {
        folder.write("art.d/big hero.json", hash(more));
        EXPECT_EQ(kxsprite(folder, "make 'art.d/big hero.json' --step-ms 50 -o a.spr").output, "");
        EXPECT_EQ(contentOf(folder / "a.spr"),
                  Bytes::head("hero.png")
                      .number(0)
                      .number(1)
                      .raw(animation("big hero", {0, 1, 2, 3}, -1, {3, 1, 2, 1})));
    }
}

TEST(Import, TheSheetLosesItsFolder) {
    const TemporaryFolder folder;
    for (const char* image : {"/home/me/art/hero.png", R"(C:\\art\\hero.png)", "../hero.png"}) {
        folder.write("a.json", R"({"frames": [{)" + frame(0, 1) + "}], " + meta("", image) + "}");
        EXPECT_EQ(kxsprite(folder, "make a.json -o a.spr").output, "");
        EXPECT_EQ(kxsprite(folder, "info a.spr").output.rfind("texture: hero.png\n", 0), 0u) << image;
    }
}

TEST(Import, SaysWhatASpriteCannotDo) {
    const TemporaryFolder folder;
    folder.write("a.json",
                 array(R"(, "frameTags": [)" + tag("a", 0, 1, "forward", R"(, "repeat": "3")") + "]"));
    const Outcome run = kxsprite(folder, "make a.json -o a.spr");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output,
              "kxsprite: a.json: tag 'a' is played 3 times, which a sprite cannot do; it loops\n");
    EXPECT_NE(kxsprite(folder, "info a.spr").output.find("2 frames, loop"), std::string::npos);
}

/// One frame with other particulars.
std::string withFrame(const std::string& particulars) {
    return R"({"frames": [{"filename": "f", )" + frame(0, 100, particulars) + "}], " + meta("") + "}";
}

std::string withTags(const std::string& tags) { return array(R"(, "frameTags": [)" + tags + "]"); }

std::string withSlice(const std::string& keys) {
    return array(R"(, "slices": [{"name": "s", "keys": [)" + keys + "]}]");
}

TEST(Import, RefusesWithTheOptionToChange) {
    const std::string key = R"({"frame": 0, "bounds": {"x": 0, "y": 0, "w": 1, "h": 1}})";
    const struct {
        std::string json;
        const char *said, *option;
    } cases[] = {
        {withFrame(R"("trimmed": true)"), "frame 'f' is trimmed", "--trim"},
        {withFrame(R"("sourceSize": {"w": 17, "h": 16})"), "frame 'f' is trimmed", "--trim"},
        {withFrame(R"("spriteSourceSize": {"x": 0, "y": 2, "w": 16, "h": 16})"), "is trimmed", "--trim"},
        {withFrame(R"("sourceSize": {"w": 15, "h": 16})"), "is larger", "--inner-padding"},
        {withFrame(R"("rotated": true)"), "frame 'f' is rotated", "--sheet-type"},
        {withFrame(R"("rotated": 1)"), "'frames[0].rotated' must be true or false", ""},
        {withSlice(key + R"(, {"frame": 1, "bounds": {"x": 1, "y": 0, "w": 1, "h": 1}})"),
         "slice 's' moves between frames", "--list-slices"},
        {withSlice(""), "'meta.slices[0].keys' is empty", ""},
        {withTags(tag("t", 0, 4, "forward")), "tag 't' covers the frames 0 to 4", "--ignore-empty"},
        {withTags(tag("t", -1, 0, "forward")), "tag 't' covers the frames -1 to 0", ""},
        {withTags(tag("t", 2, 1, "forward")), "tag 't' covers the frames 2 to 1", ""},
        {withTags(tag("t", 0, 1, "sideways")), "is 'sideways'", "--list-tags"},
        {withTags(tag("t", 0, 1, "forward") + "," + tag("t", 0, 1, "forward")), "two tags", "--list-tags"},
        {withTags(tag("t", 0, 1, "forward", R"(, "repeat": "often")")), "must be a text of digits", ""},
        {R"({"frames": {"a": {)" + frame(0, 1) + R"(}, "a": {)" + frame(1, 1) + "}}, " + meta("") + "}",
         "the key 'a' occurs twice", "--filename-format"},
        {R"({"frames": [], )" + meta("") + "}", "has no frames", "--ignore-empty"},
        {R"({"frames": [{)" + frame(0, -1) + "}], " + meta("") + "}", "'frames[0].duration' is negative", ""},
        {R"({"frames": [{)" + frame(0, 1) + R"(}], "meta": {}})", "names no picture", "--sheet"},
    };
    const TemporaryFolder folder;
    for (const auto& [json, said, option] : cases) {
        folder.write("a.json", json);
        const Outcome run = kxsprite(folder, "make a.json -o a.spr");
        EXPECT_EQ(run.status, 1) << json;
        EXPECT_EQ(run.output.rfind("kxsprite: a.json: ", 0), 0u) << run.output;
        EXPECT_NE(run.output.find(said), std::string::npos) << run.output;
        EXPECT_NE(run.output.find(option), std::string::npos) << run.output;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "a.spr"));
}
} // namespace
