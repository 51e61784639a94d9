// kxsprite preview: what the picture shows, and what it needs.

#include "Tool.h"

#include "support/Image.h"

#include <gif_lib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

namespace {
constexpr Pixel red = {250, 10, 10, 255}, blue = {10, 10, 250, 255}, outline = {255, 51, 51, 255},
                white = {255, 255, 255, 255};

/// Plays red and blue once, slowly; one box of 4 by 5.
const std::string sprite =
    spriteFile(Fields{"hero.png", 1, "hit", 2.f, 3.f, 4, 5, 2, "A", 2, 50, 0.f, 0.f, 16, 16} +
               Fields{60, 16.f, 0.f, 16, 16, 0, "B", 1, 1, 16.f, 0.f, 16, 16, -1});

/// What an animated GIF shows.
struct Movie {
    explicit Movie(const std::string& path) {
        const std::unique_ptr<FILE, int (*)(FILE*)> file(KXOpenFile(path.c_str(), "rb"), std::fclose);
        const std::unique_ptr<GifFileType, void (*)(GifFileType*)> gif(
            DGifOpen(file.get(), read, nullptr), [](GifFileType* opened) { DGifCloseFile(opened, nullptr); });
        if (!gif || DGifSlurp(gif.get()) != GIF_OK)
            return;
        for (int i = 0; i < gif->ImageCount; ++i) {
            const SavedImage& image = gif->SavedImages[i];
            GraphicsControlBlock control = {};
            DGifSavedExtensionToGCB(gif.get(), i, &control);
            times.push_back(control.DelayTime);
            Image& frame = frames.emplace_back(Image{gif->SWidth, gif->SHeight, {}});
            for (int k = 0; k < frame.width * frame.height; ++k) {
                const int index = image.RasterBits[k];
                const GifColorType color = image.ImageDesc.ColorMap->Colors[index];
                const bool isSeen = index != control.TransparentColor;
                frame.pixels.push_back(isSeen ? Pixel{color.Red, color.Green, color.Blue, 255} : Pixel{});
            }
        }
        loops = gif->SavedImages[0].ExtensionBlockCount > 1;
    }

    std::vector<Image> frames;
    std::vector<int> times; // in hundredths of a second
    bool loops = false;

private:
    static int read(GifFileType* gif, GifByteType* bytes, int count) {
        FILE* const file = static_cast<FILE*>(gif->UserData);
        return file ? static_cast<int>(std::fread(bytes, 1, static_cast<std::size_t>(count), file)) : 0;
    }
};

struct Preview : Tool {
    /// A sheet of a red and a blue frame, 16 by 16 each.
    void saveSheet() const {
        Image sheet = {32, 16, std::vector<Pixel>(512, red)};
        for (std::size_t i = 0; i < sheet.pixels.size(); ++i)
            if (i % 32 >= 16)
                sheet.pixels[i] = blue;
        sheet.save(folder / "hero.png");
    }

    Outcome preview(const std::string& bytes, const std::string& settings = "KXSPRITE_FONT=none") const {
        folder.write("hero.spr", bytes);
        return kxsprite("preview hero.spr -o a.png", settings);
    }

    Image picture(const std::string& bytes) const {
        const Outcome run = preview(bytes);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.output.rfind("kxsprite: no font was found", 0), 0u) << run.output;
        return Image::fromFile(folder / "a.png");
    }

    static std::ptrdiff_t count(const Image& image, const Pixel& pixel) {
        return std::count(image.pixels.begin(), image.pixels.end(), pixel);
    }
};

TEST_F(Preview, DrawsEveryFrameWithItsBoxesAndALabel) {
    saveSheet();
    const Image rows = picture(sprite);
    // The outline of a box of 4 by 5 covers 14 of its pixels.
    EXPECT_EQ(count(rows, red), 256 - 14);
    EXPECT_EQ(count(rows, blue), 2 * (256 - 14));
    EXPECT_EQ(count(rows, outline), 3 * 14);
    EXPECT_EQ(count(rows, white), 0);
    const auto first = std::find(rows.pixels.begin(), rows.pixels.end(), red) - rows.pixels.begin();
    EXPECT_EQ(rows.pixels[static_cast<std::size_t>(first + 24)], blue)
        << "the second frame is beside the first";
    EXPECT_EQ(rows.pixels[static_cast<std::size_t>(first + 3 * rows.width + 2)], outline);

    const Outcome labelled = preview(sprite, "");
    EXPECT_EQ(labelled.status, 0);
    if (labelled.output.empty()) {
        const Image labels = Image::fromFile(folder / "a.png");
        EXPECT_GT(differingPixels(rows, labels, 100), 20);
        EXPECT_EQ(count(labels, blue), 2 * (256 - 14)) << "labels lie beside the frames";
    }
}

TEST_F(Preview, MakesRoomForBoxesOutsideTheFrameAndForLongAnimations) {
    saveSheet();
    const Image far =
        picture(spriteFile({"hero.png", 1, "far", -40.f, -50.f, 4, 5, 1, "A", 1, 1, 0.f, 0.f, 16, 16, 0}));
    EXPECT_EQ(count(far, outline), 14);
    EXPECT_EQ(count(far, red), 256);

    Fields fields = {"hero.png", 0, 1, "A", 200};
    for (int i = 0; i < 200; ++i)
        fields = fields + Fields{1, 0.f, 0.f, 16, 16};
    const Image lines = picture(spriteFile(fields + Fields{0}));
    EXPECT_LT(lines.width, 2000) << "goes on in the next line";
    EXPECT_EQ(count(lines, red), 200 * 256);
}

TEST_F(Preview, SaysWhatItCannotDraw) {
    expectFault(preview(sprite), "hero.spr", "hero.png' is missing");
    folder.write("hero.png", "no picture");
    expectFault(preview(sprite), "hero.spr", "is no image");
    saveSheet();
    const std::pair<Fields, const char*> cases[] = {
        {{"hero.png", 0, 0}, "has no animations"},
        {{"", 0, 1, "A", 1, 1, 0.f, 0.f, 16, 16, 0}, "names no sheet"},
        {{"hero.png", 0, 1, "A", 1, 1, 0.f, 0.f, 1, 0x7FFFFFFF, 0}, "is too large to be drawn"},
        {{"hero.png", 1, "b", NAN, 0.f, 1, 1, 1, "A", 1, 1, 0.f, 0.f, 1, 1, 0}, "a box has a position"}};
    for (const auto& [fields, said] : cases)
        expectFault(preview(spriteFile(fields)), "hero.spr", said);
    folder.write("hero.spr", sprite);
    expectFault(kxsprite("preview hero.spr -o no/such.png"), "no/such.png", "Unable to write");
}

TEST_F(Preview, AGifMovesAsLongAsTheSprite) {
    saveSheet();
    folder.write("hero.spr", sprite);
    EXPECT_EQ(kxsprite("preview hero.spr -o a.GIF --animation A --scale 3 --step-ms 17").output, "");
    const Movie once(folder / "a.GIF");
    ASSERT_EQ(once.times, (std::vector{85, 102}));
    EXPECT_FALSE(once.loops);
    for (const Image& frame : once.frames)
        EXPECT_EQ(count(frame, &frame == &once.frames[0] ? red : blue), 48 * 48);
    expectFault(kxsprite("preview hero.spr -o b.gif"), "hero.spr", "--animation");
    expectFault(kxsprite("preview hero.spr -o b.gif --animation C"), "hero.spr", "has no animation 'C'");
    expectFault(kxsprite("preview hero.spr -o no/b.gif --animation A"), "no/b.gif", "cannot be written");

    Fields frames = {"hero.png", 0, 1, "A", 4};
    for (int i = 0; i < 4; ++i)
        frames = frames + Fields{i - 1, 0.f, 0.f, 16, 16};
    folder.write("hero.spr", spriteFile(frames + Fields{-1}));
    kxsprite("preview hero.spr -o b.gif --step-ms 25");
    const Movie loop(folder / "b.gif");
    EXPECT_EQ(loop.times, (std::vector{3, 2, 3, 5})) << "no rest is lost";
    EXPECT_TRUE(loop.loops);
}

TEST_F(Preview, AGifHasTheColoursOfEachFrame) {
    Image sheet = {32, 17, std::vector<Pixel>(544)};
    for (std::size_t i = 0; i < 544; ++i) {
        const int color = static_cast<int>(i) * 5;
        sheet.pixels[i] = {static_cast<std::uint8_t>(color), static_cast<std::uint8_t>(color >> 4), 90,
                           static_cast<std::uint8_t>(i % 17 == 3 ? 127 : 128)};
    }
    sheet.save(folder / "hero.png");
    folder.write(
        "hero.spr",
        spriteFile(Fields{"hero.png", 0, 1, "A", 2, 1, 0.f, 0.f, 32, 8, 1, 0.f, 0.f, 32} + Fields{17, -1}));
    kxsprite("preview hero.spr -o a.gif");
    const Movie movie(folder / "a.gif");
    ASSERT_EQ(movie.frames.size(), 2u);
    for (Pixel& pixel : sheet.pixels)
        pixel = pixel.a < 128 ? Pixel{} : Pixel{pixel.r, pixel.g, pixel.b, 255};
    EXPECT_EQ(differingPixels(movie.frames[1], sheet, 40), 0);
    std::fill(sheet.pixels.begin() + 32 * 8, sheet.pixels.end(), Pixel{}); // the first frame is not as high
    EXPECT_EQ(differingPixels(movie.frames[0], sheet), 0) << "exact, with 241 colours";
}

TEST_F(Preview, ScalesFramesAndBoxes) {
    saveSheet();
    folder.write("hero.spr", sprite);
    EXPECT_EQ(kxsprite("preview hero.spr -o a.png --scale 4 --animation A", "KXSPRITE_FONT=none").status, 0);
    const Image rows = Image::fromFile(folder / "a.png");
    const int ring = 2 * 16 + 2 * 20 - 4; // the outline of the box of 16 by 20
    EXPECT_EQ(count(rows, red), 64 * 64 - ring);
    EXPECT_EQ(count(rows, blue), 64 * 64 - ring) << "no other animation";
}
} // namespace
