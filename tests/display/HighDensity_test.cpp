// On a display with two pixels to a point.

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXShader.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTextLayout.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIGlobalFont.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUITextEntry.h>

#include "support/Golden.h"
#include "text/TextTest.h"
#include "ui/EveryState.h"

#include <tuple>

namespace {
struct HighDensity : RenderTest {
    HighDensity() : RenderTest({400, 300}) {}

    /// Expects an image, by default of the window, in which `filled` is red and nothing else,
    /// @a scale pixels to a point.
    static void expectRed(const Image& image, int scale, int width = 400, int height = 300,
                          Pixel ground = black) {
        EXPECT_EQ(std::pair(image.width, image.height), std::pair(width * scale, height * scale));
        expectBox(image, {10 * scale, 20 * scale, 110 * scale, 70 * scale}, red, ground);
    }

    const KXRect filled = {{10, 20}, {100, 50}};
};

TEST_F(HighDensity, AWindowDrawsAndClipsInPoints) {
    EXPECT_EQ(window->size().width, 400);
    EXPECT_EQ(window->rect().size.height, 300);
    EXPECT_EQ(state(GL_VIEWPORT), (std::array<GLint, 4>{0, 0, 800, 600}));
    KXDrawRectFill(filled, KXRedColor);
    expectRed(Image::of(*window), 2);
    KXDrawRectFill({{0, 0}, {400, 300}}, {0, 0, 0, 1});
    window->setClipTo(filled);
    EXPECT_EQ(state(GL_SCISSOR_BOX), (std::array<GLint, 4>{20, 460, 200, 100}));
    KXDrawRectFill({{0, 0}, {400, 300}}, KXRedColor);
    expectRed(Image::of(*window), 2);
    window->unsetClip();
    EXPECT_EQ(state(GL_SCISSOR_BOX), (std::array<GLint, 4>{0, 0, 400, 300})) << "in points, as it always was";
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
}

TEST_F(HighDensity, WholeMultiplesAreOfPixels) {
    EXPECT_EQ(window->density(), 2);
    KXLogicalSize logical;
    logical.size = {150, 110}; // five pixels to a unit: 375 by 275 points
    logical.scaling = KXScalingWholeMultiples;
    window->setLogicalSize(logical);
    window->setRenderContext();
    EXPECT_EQ(state(GL_VIEWPORT), (std::array<GLint, 4>{25, 25, 750, 550}));
    EXPECT_TRUE(KXEqualRects(window->pictureRect(), {{12.5f, 12.5f}, {375, 275}}));
    KXDrawRectFill({{10, 20}, {30, 40}}, KXRedColor);
    expectBox(Image::of(*window), {75, 125, 225, 325});
}

TEST_F(HighDensity, OutlinedTextIsSeenByCamerasAndShaders) {
    KXFont font(testFont(), KXAliasModePolygon);
    font.setSize(20);
    KXShader swapped("void main() { gl_FragColor = kxColor.bgra; }");
    const Image plain = picture([&] { font.print({40, 60}, KXRedColor, "To"); });
    for (const auto& [camera, scale] :
         {std::pair(KXCamera{{190, 140}, 1, 0, {{0, 0}, {-1, -1}}}, 1), // 10 points to the top left
          std::pair(KXCamera{{110, 95}, 2, 0, {{0, 0}, {-1, -1}}}, 2)}) {
        const Image seen = picture([&] {
            KXPushCamera(camera), KXPushShader(&swapped);
            font.print({30, 50}, KXBlueColor, "To");
            KXPopShader(), KXPopCamera();
        });
        const Box from = boxOf(plain), to = boxOf(seen);
        EXPECT_NEAR(to[2] - to[0], scale * (from[2] - from[0]), 2);
        EXPECT_NEAR(to[3] - to[1], scale * (from[3] - from[1]), 2);
        EXPECT_EQ(differingPixels(plain, seen) == 0, scale == 1);
    }
}

TEST_F(HighDensity, SharpTextIsAsALargerFontWouldPrintIt) {
    KXFont font(testFont(), KXAliasModeTexture), large(testFont(), KXAliasModeTexture);
    font.setSize(20);
    large.setSize(40);
    const auto top = [](const KXFont& by, float y) {
        return y - std::floor(by.ascender()) - std::floor(by.descender());
    };
    const Image expected = picture([&] {
        glScalef(0.5f, 0.5f, 1); // a unit is a pixel
        large.print({60, top(large, 160)}, white, "Sharp as glass");
        const KXTextLayout layout(large, "fjord glyphs");
        layout.draw({60, 300 - layout.line(0).baseline}, white);
        glLoadIdentity();
    });
    const auto show = [&] {
        font.print({30, top(font, 80)}, white, "Sharp as glass");
        const KXTextLayout layout(font, "fjord glyphs");
        layout.draw({30, 150 - layout.line(0).baseline}, white);
    };
    EXPECT_GT(differingPixels(picture(show), expected), 500);
    window->setSharpText(-1);
    EXPECT_EQ(differingPixels(picture(show), expected), 0);
}

TEST_F(HighDensity, ACopyHasTheSizeInPointsAndDisturbsNothing) {
    KXDrawRectFill(filled, KXRedColor);
    glTranslatef(5, 6, 0);
    window->setClipTo({{0, 0}, {3, 3}}); // must clip what the game draws, not the copy
    const auto states = [] {
        std::array<GLfloat, 16> matrix = {};
        glGetFloatv(GL_MODELVIEW_MATRIX, matrix.data());
        return std::tuple(matrix, state(GL_SCISSOR_BOX), state(GL_VIEWPORT), glIsEnabled(GL_SCISSOR_TEST),
                          glIsEnabled(GL_BLEND), KXCurrentRenderContext());
    };
    const auto before = states();
    const std::unique_ptr<KXTexture> copy(window->copyTexture());
    ASSERT_NE(copy, nullptr);
    expectRed(Image::of(*copy), 1);
    EXPECT_EQ(states(), before);
    window->unsetClip();
    KXDrawRectFill(filled, {1, 1, 1, 0.5f});
    const std::unique_ptr<KXTexture> pale(window->copyTexture());
    EXPECT_NEAR(Image::of(*pale).at(50, 50).b, 128, 1) << "copied, not blended once more";
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
    expectRed(Image::of(target), 1, 200, 100, transparent);
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

TEST_F(HighDensity, EveryWidgetInEveryState) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, KXZeroPoint);
    window = nullptr;
    window = std::make_unique<KXWindow>("States", EveryState::size);
    window->setRenderContext();
    window->setSharpText(-1);
    EveryState states(*window);
    for (const auto& [theme, name] :
         {std::pair{KXUILightTheme(), "ui/states_light_dense"}, {KXUIDarkTheme(), "ui/states_dark_dense"}}) {
        states.draw(theme);
        expectGolden(Image::of(*window), name);
        EveryState::drawBrowser(theme);
        expectGolden(Image::of(*window).part(0, 0, 960, 600), name + std::string("_browser"));
    }
    KXUISetTheme({});
}
} // namespace
