#include "LooseSprite.h"
#include "NaturalOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

// Pictures on one sheet.

namespace {
KXImage picture(int width, int height, int color) {
    KXImage image(width, height, KXMakeColori(color % 256, color / 256 % 256, 77, 255));
    image.setPixel(0, 0, KXMakeColori(255, 255, 255, 255));
    return image;
}

/// Whether a place on a sheet shows a picture, with its edges going on around it.
bool isAt(const PackedSheet& sheet, const Area& place, const KXImage& picture, int extrude) {
    const int left = static_cast<int>(place.x), top = static_cast<int>(place.y);
    for (int y = -extrude; y < picture.height() + extrude; ++y)
        for (int x = -extrude; x < picture.width() + extrude; ++x) {
            const KXPixel* row = sheet.image.row(top + y);
            if (!row || left + x < 0 || left + x >= sheet.image.width())
                return false;
            const KXPixel *is = row + left + x,
                          *expected = picture.row(std::clamp(y, 0, picture.height() - 1)) +
                                      std::clamp(x, 0, picture.width() - 1);
            if (std::memcmp(is, expected, sizeof *is) != 0)
                return false;
        }
    return true;
}

TEST(Packer, PutsPicturesOfAllSizesWithoutLosingAny) {
    std::mt19937 random(5);
    for (const PackSettings settings : {PackSettings{0, 0}, PackSettings{1, 0}, PackSettings{2, 3}}) {
        Packer packer(settings), again(settings);
        std::vector<KXImage> pictures;
        for (int i = 0; i < 300; ++i)
            pictures.push_back(
                picture(1 + static_cast<int>(random() % 40), 1 + static_cast<int>(random() % 40), i));
        for (const KXImage& each : pictures) {
            packer.add(each);
            again.add(each);
        }
        const PackedSheet sheet = packer.pack(), same = again.pack();
        int covered = 0;
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            EXPECT_TRUE(isAt(sheet, sheet.places[i], pictures[i], settings.extrude)) << i;
            covered += pictures[i].width() * pictures[i].height();
        }
        EXPECT_EQ(sheet.percentFull, 100 * covered / (sheet.image.width() * sheet.image.height()));
        EXPECT_GE(sheet.percentFull, settings.extrude ? 45 : settings.padding ? 80 : 88);
        EXPECT_EQ(sheet.places, same.places);
        EXPECT_LT(sheet.image.height(), 5 * sheet.image.width());
    }
}

TEST(Packer, FillsASheetWithFramesOfOneSizeAndSharesEqualOnes) {
    Packer packer({1, 0});
    std::size_t last = 0;
    for (int i = 0; i < 24; ++i)
        last = packer.add(picture(15, 31, i % 12));
    EXPECT_EQ(last, 11u);
    EXPECT_NE(packer.add(picture(31, 15, 3)), 3u) << "as many pixels, but another picture";
    Packer twelve({1, 0});
    for (int i = 0; i < 12; ++i)
        twelve.add(picture(15, 31, i));
    const PackedSheet sheet = twelve.pack();
    EXPECT_EQ((sheet.image.width() + 1) * (sheet.image.height() + 1), 12 * 16 * 32)
        << "no gap but the padding";
}

TEST(Packer, SaysWhatNoSheetCanHold) {
    Packer wide({1, 0});
    wide.add(KXImage(20000, 1));
    EXPECT_THROW(wide.pack(), Fault);
    Packer crossed({0, 0});
    crossed.add(KXImage(16384, 1));
    crossed.add(KXImage(1, 16384));
    EXPECT_THROW(crossed.pack(), Fault);
    Packer many({256, 256}); // around each
    int count = 0;
    EXPECT_THROW(while (count < 1000) many.add(picture(2, 2, count++)), Fault);
    EXPECT_EQ(count, 497);
    EXPECT_THROW(Packer({0, 0}).pack(), Fault);
}

TEST(Packer, CutsAllFramesOfASpriteAlike) {
    KXImage canvas(10, 8), other(10, 8), empty(10, 8);
    canvas.fill({{3, 2}, {2, 2}}, KXRedColor);
    other.fill({{4, 3}, {3, 4}}, KXBlueColor);
    LooseSprite sprite;
    sprite.pictures = {loosePicture(canvas), loosePicture(other), loosePicture(empty)};
    sprite.animations["walk"] = {0, {{0, 5}, {1, 6}, {2, 7}, {0, 8}}};
    sprite.boxes["hit"] = {3, 3, 2, 1};
    const SpriteSheet sheet = makeSheet({sprite}, "a.png", {{0, 0}, true});
    const auto& [left, top, right, bottom] = sheet.cuts.at(0);
    EXPECT_EQ(std::vector({left, top, right, bottom}), std::vector({3, 2, 3, 1}));
    const Document& document = sheet.documents.at(0);
    EXPECT_EQ(document.boxes.at("hit"), (Area{0, 1, 2, 1}));
    const std::vector<Frame>& frames = document.animations.at("walk").frames;
    const auto pixel = [&](std::size_t frame, int x, int y) {
        const Area& bounds = frames.at(frame).bounds;
        EXPECT_EQ(bounds.width, 4);
        EXPECT_EQ(bounds.height, 5);
        return sheet.image.row(static_cast<int>(bounds.y) + y)[static_cast<int>(bounds.x) + x];
    };
    EXPECT_EQ(pixel(0, 1, 1).r, 255);
    EXPECT_EQ(pixel(1, 1, 1).b, 255);
    EXPECT_EQ(pixel(1, 0, 1).a, 0);
    EXPECT_EQ(pixel(2, 1, 1).a, 0);
    EXPECT_EQ(frames[3].bounds, frames[0].bounds);
    EXPECT_EQ(sheet.pictures, 3u);

    const SpriteSheet whole = makeSheet({sprite}, "a.png", {{0, 0}, false});
    EXPECT_EQ(whole.documents[0].boxes.at("hit"), (Area{3, 3, 2, 1}));
    EXPECT_EQ(whole.documents[0].animations.at("walk").frames[2].bounds.width, 10);
    LooseSprite nothing;
    nothing.pictures = {loosePicture(empty)};
    EXPECT_EQ(makeSheet({nothing}, "a.png", {}).image.width(), 1) << "a frame has a size";
}

TEST(NaturalOrder, CountsNumbers) {
    const char* const sorted[] = {"",    "1",  "01",  "2",     "10",     "a", "a1",
                                  "a1b", "a2", "a10", "a10b2", "a10b10", "ab"};
    for (std::size_t i = 0; i < std::size(sorted); ++i)
        for (std::size_t k = 0; k < std::size(sorted); ++k)
            EXPECT_EQ(comesBefore(sorted[i], sorted[k]),
                      i < k || (i == 2 && k == 1) ? i != 1 || k != 2 : false)
                << sorted[i] << ", " << sorted[k];
}
} // namespace
