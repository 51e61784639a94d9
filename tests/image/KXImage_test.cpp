#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXImage.h>

#include "support/TemporaryFolder.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

bool operator==(KXPixel a, KXPixel b) { return std::memcmp(&a, &b, sizeof a) == 0; }

namespace {
constexpr KXPixel none = {0, 0, 0, 0};
constexpr KXColor clear = {0, 0, 0, 0};

bool same(const KXImage& a, const KXImage& b) {
    const auto bytes = static_cast<std::size_t>(a.width()) * static_cast<std::size_t>(a.height()) * 4;
    return a.width() == b.width() && a.height() == b.height() &&
           (bytes == 0 || std::memcmp(a.row(0), b.row(0), bytes) == 0);
}

/// Noise, with all kinds of opacity.
KXImage noise(int width, int height, unsigned seed = 1) {
    std::mt19937 random(seed);
    KXImage image(width, height);
    for (int i = 0; i < width * height; ++i) {
        const auto bits = random();
        image.row(0)[i] = {std::uint8_t(bits), std::uint8_t(bits >> 8), std::uint8_t(bits >> 16),
                           std::uint8_t(bits % 3   ? bits >> 24
                                        : bits % 2 ? 255
                                                   : 0)};
    }
    return image;
}

/// What an image looks like, a letter for each pixel and a bar for each row's end: those in one colour are #.
std::string drawn(const std::function<void(KXImage&)>& draw) {
    KXImage image(6, 4);
    draw(image);
    std::string letters;
    for (int y = 0; y < 4; ++y, letters += '|')
        for (int x = 0; x < 6; ++x)
            letters += image.row(y)[x] == none ? '.' : image.row(y)[x] == KXPixel{255, 0, 0, 255} ? '#' : '?';
    return letters;
}

TEST(Image, IsAValue) {
    const KXImage image = noise(5, 3);
    KXImage copy = image;
    EXPECT_TRUE(same(copy, image) && copy.row(0) != image.row(0));
    const KXImage taken = std::move(copy);
    EXPECT_TRUE(same(taken, image) && copy.width() == 0 && copy.height() == 0 && !copy.row(0));
    copy = taken;
    copy = *&copy;
    EXPECT_TRUE(same(copy, image) && same(KXImage::fromPixels(5, 3, image.row(0)), image));
    EXPECT_TRUE(copy.row(2) == copy.row(0) + 10 && !copy.row(-1) && !copy.row(3));
    copy.setPixel(4, 2, {2, -1, 0.5f, NAN});
    EXPECT_TRUE(copy.row(2)[4] == (KXPixel{255, 0, 128, 0}));
    for (int byte = 0; byte < 256; ++byte) {
        const auto value = static_cast<std::uint8_t>(byte);
        EXPECT_EQ(KXPixelOf(KXColorOf({value, 0, 0, 0})).r, value);
    }
    for (const auto& [x, y] : {std::pair{-1, 0}, {5, 0}, {0, -1}, {0, 3}}) {
        EXPECT_EQ(copy.getPixel(x, y).a, -1);
        EXPECT_EQ(copy.setPixel(x, y, clear), 0);
    }
}

TEST(Image, RefusesSizesItMayNotHave) {
    for (const auto& [width, height] : {std::pair{0, 5}, {5, 0}, {-1, -1}, {7, 3}, {1 << 30, 1 << 30}}) {
        KXSetMaximumImagePixels(20);
        const KXImage image(width, height);
        KXSetMaximumImagePixels(1 << 27);
        EXPECT_TRUE(image.width() == 0 && image.height() == 0 && !image.row(0));
        const std::string size = std::to_string(width) + " x " + std::to_string(height);
        EXPECT_EQ(KXError(), "Unable to make an image of " + size + " pixels, where 20 are allowed");
    }
    EXPECT_EQ(KXImage::fromPixels(2, 2, nullptr).width(), 0);
}

TEST(Image, GoesToFilesAndComesBack) {
    const TemporaryFolder folder;
    const std::string path = folder / "100%s.png";
    const KXImage image = noise(7, 5);
    EXPECT_EQ(image.writeToPNG(path.c_str()), -1);
    EXPECT_TRUE(same(KXImage(path.c_str()), image));
    std::size_t size = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> bytes(image.copyPNG(&size), std::free);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes.get()), size), contentOf(path));
    KXImage loaded;
    EXPECT_EQ(loaded.loadFromMemory(bytes.get(), size), -1);
    EXPECT_TRUE(same(loaded, image));

    EXPECT_FALSE(KXImage().writeToPNG(path.c_str()) || image.writeToPNG(nullptr) || KXImage().copyPNG(&size));
    EXPECT_EQ(size, 0U);
}

TEST(Image, LoadsPalettesAndTellsWhatItCannotLoad) {
    const TemporaryFolder folder;
    SDL_Surface* const indexed = SDL_CreateRGBSurfaceWithFormat(0, 3, 1, 8, SDL_PIXELFORMAT_INDEX8);
    const SDL_Color colors[] = {{255, 0, 0, 255}, {0, 0, 255, 255}};
    SDL_SetPaletteColors(indexed->format->palette, colors, 0, 2);
    std::memcpy(indexed->pixels, "\0\1\0", 3);
    EXPECT_EQ(IMG_SavePNG(indexed, (folder / "indexed.png").c_str()), 0);
    SDL_FreeSurface(indexed);
    KXImage image((folder / "indexed.png").c_str());
    EXPECT_TRUE(image.row(0)[0] == (KXPixel{255, 0, 0, 255}) && image.row(0)[1] == (KXPixel{0, 0, 255, 255}));

    const std::string whole = contentOf(folder / "indexed.png"), cut = whole.substr(0, whole.size() / 2);
    for (const std::string& path :
         {folder / "missing.png", folder.write("cut.png", cut), folder.write("empty.png", "")}) {
        EXPECT_EQ(image.load(path.c_str()), 0);
        EXPECT_EQ(std::string(KXError()).find("Unable to load an image (" + path + "): "), 0U) << KXError();
        EXPECT_THROW(KXImage(path.c_str()), std::bad_alloc);
    }
    KXSetMaximumImagePixels(2);
    EXPECT_EQ(image.loadFromMemory(whole.data(), whole.size()), 0);
    EXPECT_STREQ(KXError(), "Unable to load an image (in memory): more than 2 pixels");
    KXSetMaximumImagePixels(1 << 27);
    EXPECT_FALSE(image.load(nullptr) || image.loadFromMemory(nullptr, 5) || image.loadFromMemory("", 0) ||
                 image.loadFromMemory(cut.data(), cut.size()));
    EXPECT_EQ(image.width(), 3) << "a failed load keeps what was there";
    std::thread([] {
        EXPECT_EQ(KXImage().load("missing.png"), 0);
        SDL_TLSCleanup(); // of a thread that the platform has not made
    }).join();
    EXPECT_STRNE(KXError(), "Unable to load an image (missing.png): Couldn't open missing.png");
}

TEST(Image, DrawsShapes) {
    const float far = 3e9f;
    const std::pair<std::function<void(KXImage&)>, const char*> rows[] = {
        {[](KXImage& i) {
             i.fill({{1.9f, 1}, {2.2f, 2}}, KXRedColor);
         },
         "......|.##...|.##...|......|"},
        {[=](KXImage& i) {
             i.drawRectFill({{-far, 2}, {2 * far, far}}, KXRedColor);
         },
         "......|......|######|######|"},
        {[](KXImage& i) {
             i.drawRect({{0, 0}, {4, 4}}, KXRedColor);
         },
         "####..|#..#..|#..#..|####..|"},
        {[](KXImage& i) {
             i.drawRect({{4, 1}, {9, 1}}, KXRedColor);
         },
         "......|....##|......|......|"},
        {[](KXImage& i) {
             i.drawLine({0, 0}, {5, 2}, KXRedColor);
         },
         "##....|..##..|....##|......|"},
        {[](KXImage& i) {
             i.drawLine({5, 2}, {5, -9}, KXRedColor);
         },
         ".....#|.....#|.....#|......|"},
        {[](KXImage& i) {
             i.drawLine({2.9f, 3}, {2, 3}, KXRedColor);
         },
         "......|......|......|..#...|"},
        {[=](KXImage& i) {
             i.drawLine({-far, 1}, {far, 1}, KXRedColor);
         },
         "......|######|......|......|"},
        {[](KXImage& i) {
             i.drawCircleFill({2, 2}, 2, KXRedColor);
         },
         ".##...|####..|####..|.##...|"},
        {[](KXImage& i) {
             i.drawCircleFill({5.5f, 0.5f}, -0.5f, KXRedColor);
         },
         ".....#|......|......|......|"},
        {[=](KXImage& i) {
             i.drawCircleFill({3, far}, NAN, KXRedColor);
             i.drawCircleFill({NAN, 1}, 2, KXRedColor);
         },
         "......|......|......|......|"},
        {[=](KXImage& i) {
             i.drawRectFill({{NAN, far}, {far, NAN}}, KXRedColor);
             i.fill({{3, 3}, {-2, 2}}, KXRedColor);
         },
         "......|......|......|......|"},
    };
    for (const auto& [draw, letters] : rows)
        EXPECT_EQ(drawn(draw), letters);
    // No shape draws a pixel twice.
    const KXColor half = {1, 0, 0, 0.5f};
    for (const auto& draw : {std::function<void(KXImage&)>([&](KXImage& i) {
                                 i.drawRect({{0, 0}, {6, 4}}, half);
                             }),
                             {[&](KXImage& i) {
                                 i.drawLine({0, 0}, {5, 3}, half);
                             }}}) {
        KXImage image(6, 4);
        draw(image);
        for (int i = 0; i < 24; ++i)
            EXPECT_TRUE(image.row(0)[i] == none || image.row(0)[i].a == 128);
    }
}

TEST(Image, DrawsAndPastesImages) {
    const KXImage below = noise(9, 7), above = noise(6, 5, 2);
    const std::pair<int, int> places[] = {{0, 0}, {2, 1},  {-3, -2},        {6, 5},
                                          {9, 0}, {-6, 0}, {0, 2147483647}, {-2147483647 - 1, 0}};
    for (const auto& [left, top] : places) {
        KXImage drawn = below, pasted = below;
        drawn.draw(above, left, top);
        pasted.paste(above, left, top);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 9; ++x) {
                const long long column = 0LL + x - left, line = 0LL + y - top;
                const bool isOver = column >= 0 && column < 6 && line >= 0 && line < 5;
                const KXPixel under = below.row(y)[x];
                const KXPixel source = isOver ? above.row(static_cast<int>(line))[column] : none;
                EXPECT_TRUE(pasted.row(y)[x] == (isOver ? source : under));
                const double a = source.a / 255.0, b = under.a / 255.0 * (1 - a);
                const KXPixel result = drawn.row(y)[x];
                EXPECT_NEAR(result.a, (a + b) * 255, 0.5001);
                const double color = a + b > 0 ? (source.g * a + under.g * b) / (a + b) : result.g;
                EXPECT_NEAR(result.g, color, 0.5001);
            }
    }
    KXImage self = below;
    self.paste(self, 1, 1);
    EXPECT_TRUE(same(self.part({{1, 1}, {8, 6}}), below.part({{0, 0}, {8, 6}})));
}

TEST(Image, CopiesPartsFlippedAndScaled) {
    const KXImage image = noise(7, 4);
    const KXImage part = image.part({{-2, 1.9f}, {5, 9}});
    EXPECT_TRUE(part.width() == 5 && part.height() == 9 && part.row(0)[1] == none && part.row(3)[2] == none &&
                part.row(0)[2] == image.row(1)[0] && part.row(2)[4] == image.row(3)[2]);
    EXPECT_EQ(image.part({{NAN, 0}, {-1, 3}}).width(), 0);
    EXPECT_TRUE(image.part({{-3e9f, 0}, {3, 1}}).row(0)[0] == none);

    EXPECT_TRUE(image.flipped(KXFlipLeftRight).row(1)[0] == image.row(1)[6] &&
                image.flipped(KXFlipTopBottom).row(0)[2] == image.row(3)[2] &&
                image.flipped(KXFlipDiagonal).row(5)[3] == image.row(3)[5]);
    for (const int flips : {0, 2, 4, 6, 7, -1})
        EXPECT_TRUE(same(image.flipped(flips).flipped(flips), image)) << flips;
    EXPECT_EQ(KXImage().flipped(6).width(), 0);

    const KXImage large = image.scaled(21, 8, KXFilterNearest);
    EXPECT_TRUE(large.row(7)[20] == image.row(3)[6] && large.row(2)[3] == image.row(1)[1]);
    EXPECT_TRUE(same(large.scaled(7, 4, KXFilterNearest), image));
    EXPECT_TRUE(same(image.scaled(7, 4, KXFilterLinear).scaled(7, 4, KXFilterLinear),
                     image.scaled(7, 4, KXFilterLinear)));
    KXImage edge(4, 4, {1, 1, 1, 1});
    edge.fill({{2, 0}, {2, 4}}, {0, 1, 0, 0}); // what cannot be seen gives no colour
    const KXImage smooth = edge.scaled(16, 1, KXFilterLinear), small = edge.scaled(1, 1, KXFilterLinear);
    EXPECT_TRUE(smooth.row(0)[0] == (KXPixel{255, 255, 255, 255}) && smooth.row(0)[15].a == 0);
    EXPECT_NEAR(small.row(0)[0].a, 127.5, 0.5);
    for (int x = 0; x < 9; ++x)
        EXPECT_TRUE(smooth.row(0)[x].r == 255 && smooth.row(0)[x].a >= smooth.row(0)[x + 1].a) << x;
    EXPECT_TRUE(KXImage().scaled(4, 4, KXFilterLinear).width() == 0 &&
                image.scaled(-1, 4, KXFilterLinear).width() == 0);
}
} // namespace
