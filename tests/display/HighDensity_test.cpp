// On a display with two pixels to a point.

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIGlobalFont.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUITextEntry.h>

#include "support/Golden.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"
#include "text/TextTest.h"

#include <SDL_opengl.h>

#include <array>
#include <tuple>

namespace {
struct HighDensity : WindowTest {
    HighDensity() : WindowTest({400, 300}) {}

    /// Expects an image, by default of the window, in which `filled` is red and nothing else.
    static void expectRed(const Image& image, int pixelsToAPoint, int width = 400, int height = 300) {
        const int left = 10 * pixelsToAPoint, top = 20 * pixelsToAPoint;
        ASSERT_EQ(std::pair(image.width, image.height),
                  std::pair(width * pixelsToAPoint, height * pixelsToAPoint));
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                ASSERT_EQ(image.at(x, y).r,
                          x >= left && x < 11 * left && y >= top && 2 * y < 7 * top ? 255 : 0)
                    << x << ',' << y;
    }

    template<std::size_t count = 4>
    static std::array<GLint, count> get(GLenum what) {
        std::array<GLint, count> values = {};
        glGetIntegerv(what, values.data());
        return values;
    }

    const KXRect filled = {{10, 20}, {100, 50}};
};

TEST_F(HighDensity, AWindowDrawsAndClipsInPoints) {
    EXPECT_EQ(window->size().width, 400);
    EXPECT_EQ(window->rect().size.height, 300);
    EXPECT_EQ(get(GL_VIEWPORT), (std::array<GLint, 4>{0, 0, 800, 600}));
    KXDrawRectFill(filled, KXRedColor);
    expectRed(Image::of(*window), 2);
    KXDrawRectFill({{0, 0}, {400, 300}}, {0, 0, 0, 1});
    window->setClipTo(filled);
    EXPECT_EQ(get(GL_SCISSOR_BOX), (std::array<GLint, 4>{20, 460, 200, 100}));
    KXDrawRectFill({{0, 0}, {400, 300}}, KXRedColor);
    expectRed(Image::of(*window), 2);
    window->unsetClip();
    EXPECT_EQ(get(GL_SCISSOR_BOX), (std::array<GLint, 4>{0, 0, 400, 300})) << "in points, as it always was";
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
}

TEST_F(HighDensity, ACopyHasTheSizeInPointsAndDisturbsNothing) {
    KXDrawRectFill(filled, KXRedColor);
    KXDrawRectFill({{200, 100}, {50, 50}}, {0, 0, 1, 0.5f});
    glTranslatef(5, 6, 0);
    window->setClipTo({{0, 0}, {3, 3}}); // must clip what the game draws, not the copy
    const auto state = [] {
        return std::tuple(get<16>(GL_MODELVIEW_MATRIX), get(GL_SCISSOR_BOX), get(GL_VIEWPORT),
                          glIsEnabled(GL_SCISSOR_TEST) && glIsEnabled(GL_BLEND), KXCurrentRenderContext());
    };
    const auto before = state();
    const std::unique_ptr<KXTexture> copy(window->copyTexture());
    ASSERT_NE(copy, nullptr);
    const Image image = Image::of(*copy);
    expectRed(image, 1);
    EXPECT_NEAR(image.at(225, 125).b, 128, 1) << "copied, not blended once more";
    EXPECT_EQ(state(), before);
}

TEST_F(HighDensity, SavedImagesShowEveryPixel) {
    const TemporaryFolder folder;
    KXDrawRectFill(filled, KXRedColor);
    EXPECT_EQ(window->saveBuffer((folder / "plain.bmp").c_str(), 0), -1) << KXError();
    expectRed(Image::fromFile(folder / "plain.bmp"), 2);
    EXPECT_EQ(window->saveBuffer((folder / "power.bmp").c_str(), -1), -1) << KXError();
    const Image power = Image::fromFile(folder / "power.bmp");
    ASSERT_EQ(std::pair(power.width, power.height), std::pair(1024, 1024));
    EXPECT_EQ(power.at(20, 40).r, 255);
    EXPECT_EQ(power.at(820, 39).r, 255) << "beyond the drawn row, the next one follows";
}

TEST_F(HighDensity, TexturesAsTargetsAreInPixels) {
    KXTexture target(200, 100);
    target.clear();
    target.setRenderContext();
    KXDrawRectFill(filled, KXRedColor);
    target.unsetRenderContext();
    expectRed(Image::of(target), 1, 200, 100);
    window->setRenderContext();
    target.draw(0, 0, -1); // 200 x 100 points
    expectRed(Image::of(*window), 2);
}

TEST_F(HighDensity, WidgetsHaveSharpTextsThatEndWhereTheirBoxesDo) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, KXZeroPoint);
    KXUIButton button;
    button.setText("Hang it");
    button.setOrigin({20, 20});
    KXUITextEntry entry;
    entry.setRect({20, 60}, {111, 25});
    entry.setText("A text that is longer than its box by far");
    KXUIListBox list;
    list.setRect({20, 100}, {121, 93});
    for (int i = 0; i < 100; ++i)
        list.add(KXTempString("MMM %d WWW, too long for it", i));
    fill({0.2f, 0.3f, 0.4f, 1});
    KXUIGlobalFontPrint({200, 20}, white, "Ember Night");
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&button, &entry, &list})
        each->draw();
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST)) << "as it was before";
    expectGolden(Image::of(*window), "ui/dense");
}
} // namespace
