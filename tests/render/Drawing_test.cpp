#include <Kobaltrix/KXDrawing.h>

#include "support/WindowTest.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <climits>
#include <limits>

namespace {
struct Drawing : WindowTest {
    /// Counts the pixels that are not black.
    static int lit(const Image& image) {
        return static_cast<int>(
            std::count_if(image.pixels.begin(), image.pixels.end(),
                          [](const Pixel& pixel) { return pixel.r || pixel.g || pixel.b; }));
    }
};

void (*const primitives[])() = {
    [] {
        KXDrawLine({1, 1}, {9, 9}, KXRedColor);
    },
    [] {
        KXDrawRect({{1, 1}, {9, 9}}, KXRedColor);
    },
    [] {
        KXDrawRectFill({{1, 1}, {9, 9}}, KXRedColor);
    },
    [] {
        KXDrawCircle({9, 9}, 5, 9, KXRedColor);
    },
    [] {
        KXDrawCircleFill({9, 9}, 5, 9, KXRedColor);
    },
    [] {
        KXDrawTriangle({1, 1}, {9, 1}, {1, 9}, KXRedColor);
    },
    [] {
        KXDrawTriangleFill({1, 1}, {9, 1}, {1, 9}, KXRedColor);
    },
};

constexpr Pixel black = {0, 0, 0, 255}, red = {255, 0, 0, 255}, blue = {0, 0, 255, 255};

TEST_F(Drawing, RectOutlineLiesInside) {
    KXDrawRect({{10.9f, 10.2f}, {5, 5}}, KXRedColor);
    const Image image = Image::of(*window);
    for (int y = 8; y < 18; ++y)
        for (int x = 8; x < 18; ++x) {
            const bool inRect = x >= 10 && x <= 14 && y >= 10 && y <= 14;
            const bool onBorder = inRect && (x == 10 || x == 14 || y == 10 || y == 14);
            EXPECT_EQ(image.at(x, y), onBorder ? red : black) << x << ',' << y;
        }
}

TEST_F(Drawing, FilledRectTruncatesItsEdgesAndBlends) {
    fill(KXBlueColor);
    KXDrawRectFill({{-3.7f, 2.9f}, {8.9f, 4.9f}}, {1, 0, 0, 0.5f}); // x -3 to 5, y 2 to 6
    const Image image = Image::of(*window);
    EXPECT_NEAR(image.at(0, 2).r, 128, 1);
    EXPECT_NEAR(image.at(4, 5).b, 127, 1);
    EXPECT_EQ(image.at(5, 5), blue);
    EXPECT_EQ(image.at(4, 6), blue);
    EXPECT_EQ(image.at(4, 1), blue);
}

TEST_F(Drawing, LinesTruncateTheirEnds) {
    KXDrawLine({5.9f, 10.5f}, {20.9f, 10.9f}, KXRedColor);
    const Image image = Image::of(*window);
    EXPECT_EQ(lit(image), 15) << "from 5 to 20, without the last pixel";
    EXPECT_TRUE(image.at(5, 10) == red || image.at(5, 9) == red);
}

TEST_F(Drawing, CirclesStartStraightBelowTheirCentre) {
    // Four segments: a square on its tip, with corners at 0, 1.57, 3.14 and 4.71 radians from straight below.
    KXDrawCircleFill({30, 20}, 10, 4, KXRedColor);
    const Image square = Image::of(*window);
    EXPECT_EQ(square.at(30, 28), red);
    EXPECT_EQ(square.at(38, 20), red);
    EXPECT_EQ(square.at(30, 11), red);
    EXPECT_EQ(square.at(21, 19), red);
    EXPECT_EQ(square.at(36, 26), black);
    EXPECT_NEAR(lit(square), 200, 12); // its side is 10 * sqrt(2)

    fill({0, 0, 0, 1});
    KXDrawCircle({30, 20}, 10, 64, KXRedColor);
    const Image outline = Image::of(*window);
    EXPECT_EQ(outline.at(30, 20), black);
    EXPECT_NEAR(lit(outline), 57, 12);

    // Negative counts are taken as positive; 0 segments is one vertex, which encloses nothing.
    fill({0, 0, 0, 1});
    KXDrawCircleFill({30, 20}, 10, -4, KXRedColor);
    EXPECT_EQ(differingPixels(Image::of(*window), square), 0);
    fill({0, 0, 0, 1});
    KXDrawCircleFill({30, 20}, 10, 0, KXRedColor);
    EXPECT_EQ(lit(Image::of(*window)), 0);
    KXDrawCircle({30, 20}, 10, INT_MIN, KXRedColor); // ends
    KXDrawCircle({30, 20}, INT_MAX, INT_MAX, KXRedColor);
}

TEST_F(Drawing, TriangleOutlinesAreThicker) {
    KXDrawTriangleFill({10, 10}, {30, 10}, {10, 30}, KXRedColor);
    const Image filled = Image::of(*window);
    EXPECT_EQ(filled.at(11, 11), red);
    EXPECT_EQ(filled.at(28, 28), black);
    fill({0, 0, 0, 1});
    KXDrawTriangle({10, 10}, {30, 10}, {10, 30}, KXRedColor);
    const Image outline = Image::of(*window);
    EXPECT_EQ(outline.at(15, 15), black);
    int thickness = 0;
    for (int y = 5; y < 15; ++y)
        thickness += outline.at(15, y) == red;
    EXPECT_EQ(thickness, 2);
}

TEST_F(Drawing, EveryPrimitiveLeavesTexturingOnAndMatricesAlone) {
    GLfloat before[16], after[16];
    glTranslatef(3, 4, 0);
    glGetFloatv(GL_MODELVIEW_MATRIX, before);
    for (const auto& primitive : primitives) {
        glDisable(GL_TEXTURE_2D);
        fill({0, 0, 0, 1});
        primitive();
        EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
        glGetFloatv(GL_MODELVIEW_MATRIX, after);
        EXPECT_TRUE(std::equal(before, before + 16, after));
        EXPECT_GT(lit(Image::of(*window)), 0);
    }
}

TEST_F(Drawing, TheGamesEdgeFlagSurvives) {
    for (const GLenum mode : {GL_LINE, GL_FILL}) {
        fill({0, 0, 0, 1});
        glEdgeFlag(GL_FALSE);
        glPolygonMode(GL_FRONT_AND_BACK, mode);
        KXDrawRect({{10, 10}, {9, 9}}, KXRedColor);
        EXPECT_GT(lit(Image::of(*window)), 0) << "edges show although the game has switched them off";
        GLboolean flag = GL_TRUE;
        glGetBooleanv(GL_EDGE_FLAG, &flag);
        EXPECT_EQ(flag, GL_FALSE);
    }
}

TEST_F(Drawing, AbsurdCoordinatesAreDefined) {
    using Limits = std::numeric_limits<float>;
    for (const float value : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 1e30f, -1e30f}) {
        KXDrawLine({value, 1}, {2, value}, KXRedColor);
        KXDrawRect({{value, value}, {value, value}}, KXRedColor);
        KXDrawRectFill({{value, 0}, {value, 3}}, KXRedColor);
        KXDrawCircle({value, value}, -5, 12, KXRedColor);
        KXDrawTriangleFill({value, 1}, {2, value}, {3, 3}, {value, 0, 0, value});
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(DrawingWithoutAWindow, DoesNothing) {
    for (const auto& primitive : primitives)
        primitive();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
}
} // namespace
