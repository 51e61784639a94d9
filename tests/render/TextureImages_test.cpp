#include "RenderTest.h"

#include <Kobaltrix/KXDrawBatch.h>

#include <cstring>

namespace {
struct TextureImages : RenderTest {
    KXImage noise(int width, int height) {
        KXImage image(width, height);
        for (int i = 0; i < 4 * width * height; ++i)
            (&image.row(0)->r)[i] = static_cast<std::uint8_t>(random());
        return image;
    }
    static bool same(const KXImage& a, const KXImage& b) {
        const auto bytes = static_cast<std::size_t>(a.width()) * static_cast<std::size_t>(a.height()) * 4;
        return a.width() == b.width() && a.height() == b.height() && bytes > 0 &&
               std::memcmp(a.row(0), b.row(0), bytes) == 0;
    }
    void SetUp() override { glPixelStorei(GL_UNPACK_ROW_LENGTH, 17); } // the game's own
};

TEST_F(TextureImages, GoInAndComeBack) {
    KXImage image = noise(13, 7);
    KXTexture texture(image);
    EXPECT_TRUE(same(texture.copyImage(), image));
    const GLint bound = state(GL_TEXTURE_BINDING_2D)[0];
    const KXImage part = noise(6, 5);
    const std::pair<int, int> places[] = {{2, 1}, {-3, -2}, {10, 4}, {13, 0}, {-6, 0}, {0, 2147483647}};
    for (const auto& [x, y] : places) {
        texture.getPixel({0, 0}, -1); // kept until the contents change
        EXPECT_EQ(texture.setPart(part, x, y), -1);
        image.paste(part, x, y);
        EXPECT_TRUE(same(texture.copyImage(), image)) << x << ", " << y;
        EXPECT_FLOAT_EQ(texture.getPixel({0, 0}, 0).r, image.getPixel(0, 0).r);
    }
    EXPECT_EQ(state(GL_TEXTURE_BINDING_2D)[0], bound);
    EXPECT_EQ(state(GL_UNPACK_ROW_LENGTH)[0], 17);
    EXPECT_EQ(texture.setImage(noise(13, 7)), -1);
    EXPECT_EQ(state(GL_TEXTURE_BINDING_2D)[0], bound) << "the same size, the same texture";
    EXPECT_EQ(texture.setImage(image = noise(5, 9)), -1);
    EXPECT_TRUE(same(texture.copyImage(), image));
    const char rgb[3] = {1, 2, 3};
    texture._loadFromData(1, 1, 3, GL_RGB, rgb); // which has no opacity to set
    EXPECT_EQ(texture.setImage(image = noise(1, 1)), -1);
    EXPECT_TRUE(same(texture.copyImage(), image));
}

TEST_F(TextureImages, FailuresLeaveATextAndWhatWasThere) {
    const KXImage image = noise(2, 2);
    KXTexture texture(image), empty;
    EXPECT_TRUE(!texture.setImage(KXImage()) && texture.setPart(KXImage(), 0, 0) &&
                same(texture.copyImage(), image));
    for (const bool isClosed : {false, true}) {
        if (isClosed)
            window.reset();
        KXTexture& broken = isClosed ? texture : empty;
        for (const auto& fails : {std::function<bool()>([&] { return broken.setPart(image, 0, 0) == 0; }),
                                  {[&] { return broken.copyImage().width() == 0; }}}) {
            _KXClearError();
            EXPECT_TRUE(fails());
            EXPECT_STRNE(KXError(), "");
        }
        broken.setFilter(KXFilterLinear);
        broken.setWrap(KXWrapMirror);
    }
    EXPECT_EQ(sides(KXTexture(image).size()), (Sides{0, 0})) << "there is no window";
}

TEST_F(TextureImages, ShowTheirEdgesAndScaleAsTheyAreTold) {
    KXImage pair(2, 1, {1, 1, 1, 1});
    pair.setPixel(0, 0, {0, 0, 0, 1});
    KXTexture texture(pair);
    // The first pixel, on the left edge, and one between the two: sixteen times as wide.
    const auto shown = [&] {
        const Image image = picture([&] { texture.draw(0, 0, 2, 1, 32, 8, 0, 0, 1.0f, 1.0f, 0, 0, -1); });
        return std::array{image.at(0, 4).r, image.at(14, 4).r};
    };
    EXPECT_EQ(texture.filter(), KXFilterNearest);
    EXPECT_EQ(shown(), (std::array<std::uint8_t, 2>{0, 0}));
    texture.setFilter(KXFilterLinear);
    EXPECT_TRUE(shown()[0] > 100 && shown()[1] > 80) << "the opposite edge shines through";
    for (const auto& [wrap, isBlack] :
         {std::pair{KXWrapClamp, true}, {KXWrapRepeat, false}, {KXWrapMirror, true}, {KXWrap(-1), false}}) {
        texture.setWrap(wrap);
        EXPECT_EQ(shown()[0] < 8, isBlack) << wrap;
    }
    texture.setWrap(KXWrapClamp);
    KXImage large(4, 2, {1, 1, 1, 1});
    large.fill({{0, 0}, {2, 2}}, {0, 0, 0, 1});
    texture.setImage(large); // keeps both
    EXPECT_TRUE(texture.filter() == KXFilterLinear && texture.wrap() == KXWrapClamp);
    texture.draw(0, 0, 4, 2, 32, 8, 0, 0, 1.0f, 1.0f, 0, 0, -1);
    EXPECT_TRUE(Image::of(*window).at(0, 4).r < 8 && Image::of(*window).at(15, 4).r > 80);
}

TEST_F(TextureImages, GoOnBeyondTheirEdges) {
    const KXImage image(noise(5, 4));
    KXTexture texture(image);
    KXDrawOptions options;
    options.source = {{-7, -6}, {19, 17}};
    for (const KXWrap wrap : {KXWrapClamp, KXWrapRepeat, KXWrapMirror, KXWrapNone}) {
        texture.setWrap(wrap);
        const auto at = [wrap](int place, int side) {
            const int again = (place % side + side) % side,
                      twice = (place % (2 * side) + 2 * side) % (2 * side);
            return wrap == KXWrapClamp    ? std::clamp(place, 0, side - 1)
                   : wrap == KXWrapRepeat ? again
                                          : std::min(twice, 2 * side - 1 - twice);
        };
        KXImage expected(64, 48, {0, 0, 0, 1});
        for (int y = 0; y < 17; ++y)
            for (int x = 0; x < 19; ++x)
                expected.draw(image.part(rect(at(x - 7, 5), at(y - 6, 4), 1, 1)), x, y);
        if (wrap == KXWrapNone) {
            expected.fill({0, 0, 0, 1});
            expected.draw(image, 0, 0);
        }
        const Image wanted = {64, 48,
                              std::vector<Pixel>(reinterpret_cast<Pixel*>(expected.row(0)),
                                                 reinterpret_cast<Pixel*>(expected.row(47)) + 64)};
        EXPECT_EQ(differingPixels(picture([&] { texture.draw(options); }), wanted, 1), 0) << wrap;
    }
}

TEST_F(TextureImages, WhatABatchHasCollectedLeavesBeforeTheyChange) {
    const auto draw = [](KXTexture& texture, int row) {
        texture.draw(0, 0, 2, 2, 60, 8, 0, row * 9, 1.0f, 1.0f, 0, 0, -1);
    };
    KXImage image(2, 2, KXRedColor);
    image.setPixel(1, 0, KXBlueColor);
    const auto scene = [&] {
        KXTexture texture(image);
        draw(texture, 0);
        texture.setPart(KXImage(1, 1, KXGreenColor), 0, 1);
        draw(texture, 1);
        texture.setFilter(KXFilterLinear);
        draw(texture, 2);
        texture.setWrap(KXWrapMirror);
        draw(texture, 3);
        texture.setImage(KXImage(2, 2, {0, 1, 1, 1}));
        draw(texture, 4);
    };
    const Image atOnce = picture(scene);
    const Image batched = picture([&] {
        KXBeginDrawBatch();
        scene();
        KXEndDrawBatch();
    });
    EXPECT_EQ(differingPixels(atOnce, batched), 0);
    EXPECT_TRUE(atOnce.at(2, 40).b == 255 && atOnce.at(2, 4) == red);
    EXPECT_TRUE(
        same(window->copyImage(), KXImage::fromPixels(batched.width, batched.height, batched.pixels.data())));
}
} // namespace
