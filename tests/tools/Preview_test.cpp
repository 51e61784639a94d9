// kxsprite preview: what the picture shows, and what it needs.

#include "Tool.h"

#include "support/Image.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr Pixel red = {250, 10, 10, 255}, blue = {10, 10, 250, 255}, outline = {255, 51, 51, 255},
                white = {255, 255, 255, 255};

/// A sheet of a red and a blue frame, 16 by 16 each.
void saveSheet(const std::string& path) {
    Image sheet = {32, 16, std::vector<Pixel>(512, red)};
    for (std::size_t i = 0; i < sheet.pixels.size(); ++i)
        if (i % 32 >= 16)
            sheet.pixels[i] = blue;
    sheet.save(path);
}

/// Plays red and blue once, slowly; one box of 4 by 5.
Bytes sprite() {
    return Bytes::head("hero.png")
        .number(1)
        .name("hit")
        .area(2, 3, 4, 5)
        .number(2)
        .name("A")
        .number(2)
        .number(50)
        .area(0, 0, 16, 16)
        .number(60)
        .area(16, 0, 16, 16)
        .number(0)
        .name("B")
        .number(1)
        .number(1)
        .area(16, 0, 16, 16)
        .number(-1);
}

std::ptrdiff_t count(const Image& image, const Pixel& pixel) {
    return std::count(image.pixels.begin(), image.pixels.end(), pixel);
}

TEST(Preview, DrawsEveryFrameWithItsBoxesAndALabel) {
    const TemporaryFolder folder;
    saveSheet(folder / "hero.png");
    folder.write("hero.spr", sprite());
    const Outcome plain = kxsprite(folder, "preview hero.spr -o plain.png", "KXSPRITE_FONT=none");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.output.rfind("kxsprite: no font was found", 0), 0u) << plain.output;
    const Image rows = Image::fromFile(folder / "plain.png");
    // The outline of a box of 4 by 5 covers 14 of its pixels.
    EXPECT_EQ(count(rows, red), 256 - 14);
    EXPECT_EQ(count(rows, blue), 2 * (256 - 14));
    EXPECT_EQ(count(rows, outline), 3 * 14);
    EXPECT_EQ(count(rows, white), 0);
    const auto first = std::find(rows.pixels.begin(), rows.pixels.end(), red) - rows.pixels.begin();
    EXPECT_EQ(rows.pixels[static_cast<std::size_t>(first + 24)], blue)
        << "the second frame is beside the first";
    EXPECT_EQ(rows.pixels[static_cast<std::size_t>(first + 3 * rows.width + 2)], outline);

    const Outcome labelled = kxsprite(folder, "preview hero.spr -o labelled.png");
    EXPECT_EQ(labelled.status, 0);
    if (labelled.output.empty()) {
        const Image labels = Image::fromFile(folder / "labelled.png");
        EXPECT_GT(differingPixels(rows, labels, 100), 20);
        EXPECT_EQ(count(labels, blue), 2 * (256 - 14)) << "labels lie beside the frames";
    }
}

TEST(Preview, MakesRoomForBoxesOutsideTheFrame) {
    const TemporaryFolder folder;
    saveSheet(folder / "hero.png");
    folder.write("hero.spr", Bytes::head("hero.png")
                                 .number(1)
                                 .name("far")
                                 .area(-40, -50, 4, 5)
                                 .number(1)
                                 .name("A")
                                 .number(1)
                                 .number(1)
                                 .area(0, 0, 16, 16)
                                 .number(0));
    EXPECT_EQ(kxsprite(folder, "preview hero.spr -o a.png").status, 0);
    const Image image = Image::fromFile(folder / "a.png");
    EXPECT_EQ(count(image, outline), 14);
    EXPECT_EQ(count(image, red), 256);
}

TEST(Preview, LongAnimationsGoOnInTheNextLine) {
    const TemporaryFolder folder;
    saveSheet(folder / "hero.png");
    Bytes bytes = Bytes::head("hero.png").number(0).number(1).name("A").number(200);
    for (int i = 0; i < 200; ++i)
        bytes.number(1).area(0, 0, 16, 16);
    folder.write("hero.spr", bytes.number(0));
    EXPECT_EQ(kxsprite(folder, "preview hero.spr -o a.png").status, 0);
    const Image image = Image::fromFile(folder / "a.png");
    EXPECT_LT(image.width, 2000);
    EXPECT_EQ(count(image, red), 200 * 256);
}

TEST(Preview, SaysWhatItCannotDraw) {
    const TemporaryFolder folder;
    const auto says = [&](const Bytes& bytes, const std::string& text, const char* output = "a.png") {
        folder.write("hero.spr", bytes);
        const Outcome run = kxsprite(folder, std::string("preview hero.spr -o ") + output);
        EXPECT_EQ(run.status, 1) << text;
        EXPECT_EQ(run.output.rfind("kxsprite: ", 0), 0u) << run.output;
        EXPECT_NE(run.output.find(text), std::string::npos) << run.output;
    };
    const Bytes walk = Bytes().name("A").number(1).number(1);
    says(sprite(), "hero.png' is missing");
    folder.write("hero.png", "no picture");
    says(sprite(), "is no image");
    saveSheet(folder / "hero.png");
    says(Bytes::head("hero.png").number(0).number(0), "has no animations");
    says(Bytes::head("").number(0).number(1).raw(walk).area(0, 0, 16, 16).number(0), "names no sheet");
    says(Bytes::head("hero.png").number(0).number(1).raw(walk).area(0, 0, 1, 0x7FFFFFFF).number(0),
         "is too large to be drawn");
    says(Bytes::head("hero.png")
             .number(1)
             .name("b")
             .area(NAN, 0, 1, 1)
             .number(1)
             .raw(walk)
             .area(0, 0, 1, 1)
             .number(0),
         "a box has a position");
    says(sprite(), "kxsprite: no/such.png: Unable to write", "no/such.png");
}
} // namespace
