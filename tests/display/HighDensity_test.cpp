// On a display with two pixels to a point.

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIGlobalFont.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUITextEntry.h>

#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"
#include "text/TextTest.h"

#include <SDL_opengl.h>

#include <array>
#include <cmath>

namespace {
struct HighDensity : WindowTest {
    HighDensity() : WindowTest({400, 300}) {}

    /// Expects `filled` to be red and nothing else.
    void expectRed(const Image& image, int pixelsToAPoint) const {
        const int left = 10 * pixelsToAPoint, top = 20 * pixelsToAPoint;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                ASSERT_EQ(image.at(x, y).r,
                          x >= left && x < 11 * left && y >= top && 2 * y < 7 * top ? 255 : 0)
                    << x << ',' << y;
    }

    static std::array<GLint, 4> get(GLenum what) {
        std::array<GLint, 4> values = {};
        glGetIntegerv(what, values.data());
        return values;
    }

    const KXRect filled = {{10, 20}, {100, 50}};
};

/// How much the texts of a part differ, in brightness for each point: those with two pixels to a point, moved
/// by some pixels, from those with one.
double difference(const Image& dense, const Image& plain, KXRect part, int moveX, int moveY) {
    const int left = static_cast<int>(part.origin.x), top = static_cast<int>(part.origin.y),
              right = left + static_cast<int>(part.size.width),
              bottom = top + static_cast<int>(part.size.height);
    double sum = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x) {
            double light = 0;
            for (int pixel = 0; pixel < 4; ++pixel)
                light += dense.at(2 * x + moveX + pixel % 2, 2 * y + moveY + pixel / 2).g;
            sum += std::abs(light / 4 - plain.at(x, y).g);
        }
    return sum / ((right - left) * (bottom - top));
}

struct DenseWidgets : HighDensity {
    DenseWidgets() {
        KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, KXZeroPoint);
        // Green is for texts alone.
        KXSetUIColor({1, 0, 0, 1}, {0, 0, 0.5f, 1}, {0, 0, 1, 1}, {1, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1});
        button = std::make_unique<KXUIButton>();
        button->setText("Hang it");
        button->setOrigin(buttonBox.origin);
        buttonBox = button->rect();
        entry = std::make_unique<KXUITextEntry>();
        entry->setRect(entryBox.origin, entryBox.size);
        entry->setText("A text that is longer than its box by far");
        list = std::make_unique<KXUIListBox>();
        list->setRect(listBox.origin, listBox.size);
        for (int i = 0; i < 100; ++i)
            list->add(KXTempString("MMM %d WWW, too long for it", i));
    }
    void draw() const {
        KXDrawRectFill({{0, 0}, {400, 300}}, {0, 0, 0, 1});
        KXUIGlobalFontPrint(textBox.origin, {0, 1, 0, 1}, "Ember Night");
        button->draw();
        entry->draw();
        list->draw();
    }

    KXRect textBox = {{200, 20}, {150, 30}}, buttonBox = {{20, 20}, {0, 0}}, entryBox = {{20, 60}, {111, 25}},
           listBox = {{20, 100}, {121, 93}};
    std::unique_ptr<KXUIButton> button;
    std::unique_ptr<KXUITextEntry> entry;
    std::unique_ptr<KXUIListBox> list;
};

TEST_F(HighDensity, AWindowHasPointsAndTwiceAsManyPixels) {
    EXPECT_EQ(window->size().width, 400);
    EXPECT_EQ(window->rect().size.height, 300);
    const Image image = Image::of(*window);
    EXPECT_EQ(image.width, 800);
    EXPECT_EQ(image.height, 600);
    EXPECT_EQ(get(GL_VIEWPORT), (std::array<GLint, 4>{0, 0, 800, 600}));
}

TEST_F(HighDensity, DrawsAndClipsInPoints) {
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
    GLfloat before[16], after[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, before);
    const auto scissor = get(GL_SCISSOR_BOX);

    const std::unique_ptr<KXTexture> copy(window->copyTexture());
    ASSERT_NE(copy, nullptr);
    const Image image = Image::of(*copy);
    EXPECT_EQ(image.width, 400);
    EXPECT_EQ(image.height, 300);
    expectRed(image, 1);
    EXPECT_NEAR(image.at(225, 125).b, 128, 1) << "copied, not blended once more";

    glGetFloatv(GL_MODELVIEW_MATRIX, after);
    EXPECT_TRUE(std::equal(before, before + 16, after));
    EXPECT_EQ(get(GL_SCISSOR_BOX), scissor);
    EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST) && glIsEnabled(GL_BLEND));
    EXPECT_EQ(get(GL_VIEWPORT), (std::array<GLint, 4>{0, 0, 800, 600}));
    EXPECT_EQ(KXCurrentRenderContext(), window.get());
}

TEST_F(HighDensity, SavedImagesShowEveryPixel) {
    const TemporaryFolder folder;
    KXDrawRectFill(filled, KXRedColor);
    EXPECT_EQ(window->saveBuffer((folder / "plain.bmp").c_str(), 0), -1) << KXError();
    const Image plain = Image::fromFile(folder / "plain.bmp");
    ASSERT_EQ(plain.width, 800);
    ASSERT_EQ(plain.height, 600);
    expectRed(plain, 2);
    EXPECT_EQ(window->saveBuffer((folder / "power.bmp").c_str(), -1), -1) << KXError();
    const Image power = Image::fromFile(folder / "power.bmp");
    ASSERT_EQ(power.width, 1024);
    ASSERT_EQ(power.height, 1024);
    EXPECT_EQ(power.at(20, 40).r, 255);
    EXPECT_EQ(power.at(820, 39).r, 255) << "beyond the drawn row, the next one follows";
}

TEST_F(HighDensity, TexturesAsTargetsAreInPixels) {
    KXTexture target(200, 100);
    target.clear();
    target.setRenderContext();
    KXDrawRectFill(filled, KXRedColor);
    target.unsetRenderContext();
    expectRed(Image::of(target), 1);
    window->setRenderContext();
    target.draw(0, 0, -1); // 200 x 100 points
    expectRed(Image::of(*window), 2);
}

TEST_F(DenseWidgets, StandWhereTheyDoWithOnePixelToAPoint) {
    window->setRenderContext();
    draw();
    const Image dense = Image::of(*window);
    KXTexture target(400, 300); // has one pixel to a point everywhere
    target.setRenderContext();
    draw();
    target.unsetRenderContext();
    const Image plain = Image::of(target);

    for (const KXRect part : {textBox, buttonBox, entryBox, listBox}) {
        SCOPED_TRACE(testing::Message() << part.origin.x << ',' << part.origin.y);
        const double here = difference(dense, plain, part, 0, 0);
        EXPECT_GT(here, 0) << "there is a text, whose edges differ";
        for (const int move : {0, 1, 2, 3, 5, 6, 7, 8}) // half a point to every side
            EXPECT_LT(1.3 * here, difference(dense, plain, part, move % 3 - 1, move / 3 - 1)) << move;
    }
    // Frames and fills have edges at points, so they are the same pixels doubled.
    for (const KXRect box : {buttonBox, entryBox, listBox})
        for (int y = -2; y < static_cast<int>(box.size.height) + 2; ++y)
            for (int x = -2; x < static_cast<int>(box.size.width) + 2; ++x) {
                const int left = static_cast<int>(box.origin.x) + x, top = static_cast<int>(box.origin.y) + y;
                const Pixel doubled = dense.at(2 * left, 2 * top), single = plain.at(left, top);
                ASSERT_TRUE(doubled == single || doubled.g || single.g)
                    << left << ',' << top << doubled << single;
            }
}

TEST_F(DenseWidgets, CutTheirTextsAtTheirEdgesAndNoSooner) {
    window->setRenderContext();
    draw();
    const Image image = Image::of(*window);
    const auto hasText = [&image](int left, int top, int right, int bottom) {
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                if (image.at(x, y).g > 0)
                    return true;
        return false;
    };
    // In pixels: around the entry, and its last letter.
    EXPECT_FALSE(hasText(0, 120, 40, 170));
    EXPECT_FALSE(hasText(2 * (20 + 111) - 2, 120, 400, 170));
    EXPECT_TRUE(hasText(2 * (20 + 111) - 24, 120, 2 * (20 + 111) - 2, 170));
    // Around the list, and its last row, of which a part is in view.
    EXPECT_FALSE(hasText(0, 200, 40, 600));
    EXPECT_FALSE(hasText(2 * (20 + 121), 180, 800, 600));
    EXPECT_FALSE(hasText(0, 2 * (100 + 93) - 2, 800, 600));
    EXPECT_TRUE(hasText(40, 2 * (100 + 93) - 12, 200, 2 * (100 + 93) - 2));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST)) << "as it was before";
}
} // namespace
