// kxsprite make from drawings, and kxsprite pack.

#include "Tool.h"
#include "ase/AseFile.h"

#include "support/Image.h"

#include <tuple>

namespace {
using namespace ase;
using namespace std::string_literals;
using Drawing = Tool;

constexpr Pixel red = {255, 0, 0, 255}, blue = {0, 0, 255, 255}, none = {0, 0, 0, 0};

/// Two frames on a canvas of 6 by 4, a red and a blue one; a third that no tag shows.
File drawing(const std::vector<std::string>& more = {}) {
    FrameFields first = {{layer(), tags({tag("walk", 0, 1, 2, 0), tag("turn", 0, 1, 1, 1)}),
                          slice("hit", {key(0, 2, 1, 2, 2)}),
                          rawCel({.x = 2, .y = 1}, 1, 2, "\xFF\0\0\xFF\xFF\0\0\xFF"s)},
                         156};
    first.chunks.insert(first.chunks.end(), more.begin(), more.end());
    return {6,
            4,
            32,
            {first,
             {{rawCel({.x = 3, .y = 1}, 1, 1, "\0\0\xFF\xFF"s)}, 8},
             {{rawCel({}, 6, 4, std::string(96, 'x'))}}}};
}

/// Rows of a sheet from a corner: red, blue and nothing.
std::string shown(const Image& sheet, const std::string& rows) {
    std::string seen = rows;
    int x = 0, y = 0;
    for (char& letter : seen) {
        if (letter == '/') {
            x = 0;
            ++y;
            continue;
        }
        const Pixel pixel = sheet.pixels.at(static_cast<std::size_t>(y * sheet.width + x++));
        letter = pixel == red ? 'r' : pixel == blue ? 'b' : pixel == none ? '.' : '?';
    }
    return seen;
}

TEST_F(Drawing, BecomesASheetAndASprite) {
    folder.write("hero.aseprite", drawing().bytes());
    const struct {
        const char *options, *said, *rows, *sheet;
        Fields sprite;
    } cases[] = {
        {"", "a.png: 5 x 2, 2 pictures, 80 % full\na.spr: cut off by 2 left, 1 top, 2 right, 1 bottom\n",
         "r...b/r....", "a.png",
         Fields{"a.png", 1, "hit", 0.f, 0.f, 2, 2, 2, "turn", 2, 1, 3.f, 0.f, 2, 2, 10, 0.f, 0.f, 2, 2, 0} +
             Fields{"walk", 2, 10, 0.f, 0.f, 2, 2, 1, 3.f, 0.f, 2, 2, -1}},
        {"--padding 0 --extrude 1 --step-ms 50 --sheet b.png",
         "b.png: 8 x 4, 2 pictures, 25 % full\na.spr: cut off by 2 left, 1 top, 2 right, 1 bottom\n",
         "rr....bb/rr....bb/rr....../rr......", "b.png",
         Fields{"b.png", 1, "hit", 0.f, 0.f, 2, 2, 2, "turn", 2, 1, 5.f, 1.f, 2, 2, 3, 1.f, 1.f, 2, 2, 0} +
             Fields{"walk", 2, 3, 1.f, 1.f, 2, 2, 1, 5.f, 1.f, 2, 2, -1}},
        {"--no-trim", "a.png: 6 x 9, 2 pictures, 88 % full\n",
         "....../..r.../..r.../....../....../....../...b..", "a.png",
         Fields{"a.png", 1, "hit", 2.f, 1.f, 2, 2, 2, "turn", 2, 1, 0.f, 5.f, 6, 4, 10, 0.f, 0.f, 6, 4, 0} +
             Fields{"walk", 2, 10, 0.f, 0.f, 6, 4, 1, 0.f, 5.f, 6, 4, -1}},
    };
    for (const auto& [options, said, rows, sheet, sprite] : cases) {
        EXPECT_EQ(kxsprite("make hero.aseprite -o a.spr " + std::string(options)).output, said);
        EXPECT_EQ(contentOf(folder / "a.spr"), spriteFile(sprite)) << kxsprite("info a.spr").output;
        EXPECT_EQ(shown(Image::fromFile(folder / sheet), rows), rows) << options;
        EXPECT_EQ(kxsprite("check a.spr").status, 0);
    }
    const std::string before = contentOf(folder / "a.png");
    kxsprite("make hero.aseprite -o a.spr --no-trim");
    EXPECT_EQ(contentOf(folder / "a.png"), before) << "the same bytes every time";
    File untagged = {1, 1, 32, {{{layer(), rawCel({}, 1, 1, "\xFF\0\0\xFF"s)}}}};
    folder.write("big hero.ase", untagged.bytes());
    kxsprite("make 'big hero.ase' -o a.spr");
    EXPECT_EQ(contentOf(folder / "a.spr"), spriteFile({"a.png", 0, 1, "big hero", 1, 6, 0.f, 0.f, 1, 1, -1}));
}

/// A few bytes of very large frames, which differ or not.
File endless(int count, bool differ) {
    File file = {16000, 4000, 32, {{{layer(), rawCel({}, 1, 1, "\xFF\0\0\xFF"s)}}}};
    for (int i = 0; i < count; ++i)
        file.frames.push_back({{linkedCel({.x = differ ? i + 1 : 0}, 0)}});
    return file;
}

TEST_F(Drawing, SaysWhatASpriteCannotBe) {
    const auto with = [](const std::string& chunk) { return drawing({chunk}).bytes(); };
    const std::tuple<std::string, const char*, int> cases[] = {
        {with(slice("s", {key(0, 1, 1, 2, 2), key(1, 1, 1, 2, 3)})), "slice 's' moves between frames", 1},
        {with(slice("s", {key(0, 1, 1, 2, 2), key(1, 1, 1, 0, 3)})),
         "slice 's' is not there in all frames, but the box is", 0},
        {with(slice("s", {key(1, 1, 1, 2, 2)})), "slice 's' is not there in all frames, but the box is", 0},
        {with(slice("s", {key(0, 1, 1, 0, 2)})), "slice 's' is hidden, and no box", 0},
        {with(slice("s", {key(0, 1, 1, 2, 2)}, 2)), "slice 's' has a pivot or a centre", 0},
        {with(slice("s", {key(0, 1, 1, 0x80000000, 2)})), "slice 's' is too large", 1},
        {with(slice("hit", {key(0, 1, 1, 2, 2)})), "two slices have the name 'hit'", 1},
        {with(tags({tag("walk", 0, 0)})), "two tags have the name 'walk'", 1},
        {with(tags({tag("a\0b"s, 0, 0)})), "tag 'a\\x00b' holds a zero byte", 1},
        {with(tags({tag("t", 0, 1, 0, 5000)})), "tag 't' is played 5000 times", 0},
        {drawing().bytes().substr(0, 200), "frame 0, ", 1},
        {endless(90, true).bytes(), "has too many frames of 16000 x 4000", 1},
    };
    for (const auto& [bytes, said, status] : cases) {
        folder.write("a.ase", bytes);
        const Outcome run = kxsprite("make a.ase -o a.spr");
        EXPECT_EQ(run.status, status) << run.output;
        EXPECT_NE(run.output.find(std::string("kxsprite: a.ase: ") + said), std::string::npos) << run.output;
        EXPECT_NE(std::filesystem::remove(_KXFilePath(folder / "a.spr")), status == 1) << said;
    }
    folder.write("a.ase", endless(90, false).bytes());
    EXPECT_EQ(kxsprite("make a.ase -o a.spr").output.substr(0, 18), "a.png: 1 x 1, 1 pi");
    folder.write("a.ase", drawing().bytes());
    folder.write("a.json", "{}");
    for (const auto& [arguments, file, said] :
         {std::tuple{"a.ase -o a.png", "a.ase", "the name of the sprite"},
          {"a.ase -o a.spr --sheet b/a.png", "a.ase", "a name without folders"},
          {"a.ase -o no/a.spr", "no/a.png", "Unable to write"},
          {"a.json -o a.spr --padding 1", "a.json", "no --padding"}})
        expectFault(kxsprite("make " + std::string(arguments)), file, said);
}

/// A picture with a dot on a canvas.
Image dot(int width, int height, int x, int y, Pixel color) {
    Image image = {width, height, std::vector<Pixel>(static_cast<std::size_t>(width * height), none)};
    image.pixels[static_cast<std::size_t>(y * width + x)] = color;
    return image;
}

struct Pictures : Tool {
    Pictures() {
        for (const char* path : {"hero/walk", "hero/.hidden", "bat/fly", "empty"})
            std::filesystem::create_directories(_KXFilePath(folder / path));
        dot(4, 3, 1, 1, blue).save(folder / "hero/walk/10.png");
        dot(4, 3, 2, 1, red).save(folder / "hero/walk/9.png");
        dot(4, 3, 1, 1, blue).save(folder / "hero/walk/11.png");
        folder.write("hero/walk/notes.txt", "no picture");
        dot(2, 2, 0, 0, red).save(folder / "bat/fly/a.png");
        folder.write("hero.ase", drawing().bytes());
    }
};

TEST_F(Pictures, OfFoldersBecomeAnimations) {
    const Fields walk = {"actors.png", 0, 1, "walk", 3};
    const char* said = "actors.png: 2 x 3, 2 pictures, 66 % full\n"
                       "actors.spr: cut off by 1 left, 1 top, 1 right, 1 bottom\n";
    for (const char* arguments :
         {"hero --ms 50", "hero/walk/ --steps 3", "hero/../hero/walk --ms 25 --step-ms 8"}) {
        EXPECT_EQ(kxsprite("pack -o actors " + std::string(arguments)).output, said) << arguments;
        EXPECT_EQ(contentOf(folder / "actors.spr"),
                  spriteFile(walk + Fields{3, 0.f, 0.f, 2, 1, 3, 0.f, 2.f, 2, 1, 3, 0.f, 2.f, 2, 1, -1}))
            << kxsprite("info actors.spr").output;
        EXPECT_EQ(shown(Image::fromFile(folder / "actors.png"), ".r/../b."), ".r/../b.");
    }
}

TEST_F(Pictures, OfSeveralSpritesLieOnOneSheet) {
    const std::string command = "pack --sprite hero hero.ase --sprite bat bat --once fly -o out/actors.png";
    std::filesystem::create_directory(_KXFilePath(folder / "out"));
    EXPECT_EQ(kxsprite(command).output, "out/actors.png: 7 x 2, 3 pictures, 64 % full\n"
                                        "out/hero.spr: cut off by 2 left, 1 top, 2 right, 1 bottom\n"
                                        "out/bat.spr: cut off by 0 left, 0 top, 1 right, 1 bottom\n");
    EXPECT_EQ(contentOf(folder / "out/bat.spr"),
              spriteFile({"actors.png", 0, 1, "fly", 1, 6, 6.f, 0.f, 1, 1, 0}));
    EXPECT_NE(kxsprite("info out/hero.spr").output.find("hit: at 0, 0, 2 x 2"), std::string::npos);
    EXPECT_EQ(kxsprite("check out/hero.spr out/bat.spr").status, 0);
    const std::string before = contentOf(folder / "out/actors.png");
    kxsprite(command);
    EXPECT_EQ(contentOf(folder / "out/actors.png"), before);
}

TEST_F(Pictures, ThatCannotBePackedAreNamed) {
    std::filesystem::create_directories(_KXFilePath(folder / "mixed/walk"));
    dot(1, 1, 0, 0, red).save(folder / "mixed/1.png");
    std::filesystem::create_directory(_KXFilePath(folder / "bad"));
    folder.write("bad/1.png", "no picture");
    for (const auto& [arguments, file, said] :
         {std::tuple{"hero hero.ase -o x", "hero.ase", "there is already an animation 'walk'"},
          {"empty -o x", "empty", "holds no pictures"},
          {". -o x", "./bad/1.png", "Unable to load"},
          {"mixed -o x", "mixed", "holds pictures beside folders"},
          {"bad -o x", "bad/1.png", ""},
          {"hero/walk/notes.txt -o x", "hero/walk/notes.txt", "is neither a folder of pictures nor"},
          {"missing -o x", "missing", "cannot be opened: No such file"},
          {"bat --once walk -o x", "x.png", "no animation 'walk' to be played once"},
          {"bat --sprite a hero -o x", "x.png", "'bat' stands before the first --sprite"},
          {"--sprite a --sprite b bat -o x", "a.spr", "no folder follows its --sprite"},
          {"--sprite a bat --sprite a hero -o x", "x.png", "two sprites have the name 'a'"},
          {"--sprite a/b bat -o x", "x.png", "a name without folders"},
          {"bat -o no/x", "no/x.png", "Unable to write"}})
        expectFault(kxsprite("pack " + std::string(arguments)), file, said);
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(folder / "x.png")));
    for (const char* arguments :
         {"-o x", "bat", "bat -o x --ms 0", "bat -o x --padding 257", "bat -o x --once"})
        EXPECT_EQ(kxsprite("pack " + std::string(arguments)).status, 2) << arguments;
}
} // namespace
