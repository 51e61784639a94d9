// On a display with two pixels to a point.

#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include "support/Image.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <SDL_opengl.h>

#include <array>
#include <memory>

namespace {
constexpr Pixel red = {255, 0, 0, 255};

struct HighDensity : testing::Test {
    HighDensity() {
        EXPECT_EQ(KXInit(), -1) << KXError();
        window = std::make_unique<KXWindow>("Dense", KXSize{400, 300});
        window->setRenderContext();
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    ~HighDensity() override {
        window.reset();
        KXDeInit();
    }

    static std::array<GLint, 4> get(GLenum what) {
        std::array<GLint, 4> values = {};
        glGetIntegerv(what, values.data());
        return values;
    }

    std::unique_ptr<KXWindow> window;
};

TEST_F(HighDensity, AWindowHasPointsAndTwiceAsManyPixels) {
    EXPECT_EQ(window->size().width, 400);
    EXPECT_EQ(window->rect().size.height, 300);
    const Image image = Image::of(*window);
    EXPECT_EQ(image.width, 800);
    EXPECT_EQ(image.height, 600);
    EXPECT_EQ(get(GL_VIEWPORT), (std::array<GLint, 4>{0, 0, 800, 600}));
}

TEST_F(HighDensity, DrawingIsInPoints) {
    KXDrawRectFill({{10, 20}, {100, 50}}, KXRedColor);
    const Image image = Image::of(*window);
    for (int y = 0; y < 600; y += 3)
        for (int x = 0; x < 800; x += 3)
            ASSERT_EQ(image.at(x, y) == red, x >= 20 && x < 220 && y >= 40 && y < 140) << x << ',' << y;
}

TEST_F(HighDensity, ClipsInPoints) {
    window->setClipTo({{10, 20}, {100, 50}});
    EXPECT_EQ(get(GL_SCISSOR_BOX), (std::array<GLint, 4>{20, 460, 200, 100}));
    KXDrawRectFill({{0, 0}, {400, 300}}, KXRedColor);
    const Image image = Image::of(*window);
    for (int y = 0; y < 600; y += 3)
        for (int x = 0; x < 800; x += 3)
            ASSERT_EQ(image.at(x, y) == red, x >= 20 && x < 220 && y >= 40 && y < 140) << x << ',' << y;
    window->unsetClip();
    EXPECT_EQ(get(GL_SCISSOR_BOX), (std::array<GLint, 4>{0, 0, 400, 300})) << "in points, as it always was";
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
}

TEST_F(HighDensity, ACopyHasTheSizeInPointsAndDisturbsNothing) {
    KXDrawRectFill({{10, 20}, {100, 50}}, {1, 0, 0, 1});
    KXDrawRectFill({{200, 100}, {50, 50}}, {0, 0, 1, 0.5f});
    glTranslatef(5, 6, 0);
    window->setClipTo({{0, 0}, {3, 3}}); // must clip what the game draws, not the copy
    GLfloat before[16], after[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, before);
    const auto scissor = get(GL_SCISSOR_BOX);

    const std::unique_ptr<KXTexture> copy(window->copyTexture());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->size().width, 400);
    EXPECT_EQ(copy->size().height, 300);
    const Image image = Image::of(*copy);
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 130; ++x)
            ASSERT_EQ(image.at(x, y).r, x >= 10 && x < 110 && y >= 20 && y < 70 ? 255 : 0) << x << ',' << y;
    EXPECT_NEAR(image.at(225, 125).b, 128, 1) << "copied, not blended once more";

    glGetFloatv(GL_MODELVIEW_MATRIX, after);
    EXPECT_TRUE(std::equal(before, before + 16, after));
    EXPECT_EQ(get(GL_SCISSOR_BOX), scissor);
    EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(get(GL_VIEWPORT), (std::array<GLint, 4>{0, 0, 800, 600}));
    EXPECT_EQ(KXCurrentRenderContext(), window.get());
}

TEST_F(HighDensity, SavedImagesShowEveryPixel) {
    const TemporaryFolder folder;
    KXDrawRectFill({{10, 20}, {100, 50}}, KXRedColor);
    const Image shown = Image::of(*window);
    EXPECT_EQ(window->saveBuffer((folder / "plain.bmp").c_str(), 0), -1) << KXError();
    const Image plain = Image::fromFile(folder / "plain.bmp");
    ASSERT_EQ(plain.width, 800);
    ASSERT_EQ(plain.height, 600);
    for (std::size_t i = 0; i < shown.pixels.size(); ++i)
        ASSERT_EQ(plain.pixels[i].r, shown.pixels[i].r) << i;
    EXPECT_EQ(window->saveBuffer((folder / "power.bmp").c_str(), -1), -1) << KXError();
    const Image power = Image::fromFile(folder / "power.bmp");
    ASSERT_EQ(power.width, 1024);
    ASSERT_EQ(power.height, 1024);
    EXPECT_EQ(power.at(20, 40).r, 255);
    EXPECT_EQ(power.at(820, 39).r, 255) << "beyond the drawn row, the next one follows";
}

TEST_F(HighDensity, TexturesAsTargetsAreInPixels) {
    KXTexture target(40, 30);
    target.clear();
    target.setRenderContext();
    KXDrawRectFill({{5, 5}, {10, 10}}, KXRedColor);
    target.unsetRenderContext();
    const Image image = Image::of(target);
    EXPECT_EQ(image.at(5, 5), red);
    EXPECT_EQ(image.at(15, 15).a, 0);
    window->setRenderContext();
    target.draw(100, 100, -1); // 40 x 30 points
    const Image shown = Image::of(*window);
    EXPECT_EQ(shown.at(210, 210), red);
    EXPECT_EQ(shown.at(229, 229), red);
    EXPECT_EQ(shown.at(230, 230).r, 0);
}
} // namespace
