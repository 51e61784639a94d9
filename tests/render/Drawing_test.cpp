#include "RenderTest.h"

#include <Kobaltrix/KXDrawBatch.h>

#include <climits>

namespace {
struct Drawing : RenderTest {
    static auto lit(const Image& image) { return image.width * image.height - count(image, black); }
    Image disc(int segments) {
        return picture([=] { KXDrawCircleFill({30, 20}, 10, segments, KXRedColor); });
    }
    Image ring(int segments) {
        return picture([=] { KXDrawCircle({30, 20}, 10, segments, KXRedColor); });
    }
};

constexpr KXPoint a = {10, 10}, b = {30, 10}, c = {10, 30};
void (*const primitives[])() = {
    [] { KXDrawRect(rect(1, 1, 9, 9), KXRedColor); },
    [] { KXDrawRectFill(rect(1, 1, 9, 9), KXRedColor); },
    [] { KXDrawLine(a, b, KXRedColor); },
    [] { KXDrawCircle(a, 5, 9, KXRedColor); },
    [] { KXDrawCircleFill(a, 5, 9, KXRedColor); },
    [] { KXDrawTriangle(a, b, c, KXRedColor); },
    [] { KXDrawTriangleFill(a, b, c, KXRedColor); },
};

TEST_F(Drawing, ClearReplacesAlphaWithinTheClipAndLeavesStateAlone) {
    KXTexture texture(64, 48);
    for (KXRenderContext* target : targets(texture)) {
        target->setRenderContext();
        fill({0, 0, 1, 1});
        glClearColor(0.5f, 0.25f, 0, 1);
        glTranslatef(20, 20, 0);
        KXBeginDrawBatch();
        paint({0, 0, 0, 1}); // before it: nothing of this is left
        target->setClipTo(rect(10, 8, 30, 20));
        KXClear({1, 0, 0, 0.5f});
        target->unsetClip();
        KXEndDrawBatch();
        float kept[4];
        glGetFloatv(GL_COLOR_CLEAR_VALUE, kept);
        EXPECT_EQ(kept[0] + kept[1], 0.75f);
        glLoadIdentity();
    }
    const Pixel half = {255, 0, 0, 128};
    const Image drawn = Image::of(texture);
    EXPECT_EQ(count(drawn, half), 30 * 20);
    EXPECT_EQ(drawn.at(10, 8), half);
    EXPECT_EQ(drawn.at(39, 27), half);
    window->setRenderContext();
    EXPECT_EQ(count(Image::of(*window), {255, 0, 0, 255}), 30 * 20) << "a window's picture has no alpha";
}

TEST_F(Drawing, RectanglesLieWithinTheirTruncatedEdges) {
    const KXColor half = {1, 0, 0, 0.5f};
    const Image outline = picture([=] { KXDrawRect({{10.9f, 10.2f}, {5.5f, 5}}, half); });
    EXPECT_EQ(boxOf(outline), (Box{10, 10, 15, 15}));
    EXPECT_EQ(lit(outline), 16) << "nothing inside";
    for (const Pixel& pixel : outline.pixels) // the top left is drawn twice
        EXPECT_NEAR(pixel.r, &pixel == &outline.at(10, 10) ? 191 : pixel == black ? 0 : 128, 1);
    const Image filled = picture([=] { paint(half, {{-3.7f, 2.9f}, {8.9f, 4.9f}}); }); // x -3 to 5, y 2 to 6
    EXPECT_EQ(boxOf(filled), (Box{0, 2, 5, 6}));
    EXPECT_EQ(lit(filled), 20);
}

TEST_F(Drawing, CirclesStartStraightBelowTheirCentre) {
    const Image triangle = disc(3), square = disc(4), outline = ring(64);
    EXPECT_EQ(triangle.at(30, 28), red) << "it stands on its tip";
    EXPECT_EQ(triangle.at(30, 12), black);
    EXPECT_NEAR(lit(triangle), 130, 10);
    EXPECT_NEAR(lit(square), 200, 12) << "its side is 10 * sqrt(2)";
    for (const KXPoint tip : {KXPoint{30, 28}, {38, 20}, {30, 11}, {21, 19}})
        EXPECT_EQ(square.at(int(tip.x), int(tip.y)), red) << tip.x;
    EXPECT_NEAR(lit(outline), 57, 12);
    EXPECT_EQ(differingPixels(disc(-4), square), 0);
    EXPECT_EQ(lit(disc(0)) + lit(disc(1)) + lit(disc(2)) + lit(ring(0)) + lit(ring(1)), 0);
    ring(INT_MIN); // ends
    KXDrawCircle({30, 20}, INT_MAX, INT_MAX, KXRedColor);
}

TEST_F(Drawing, LinesTruncateTheirEndsAndTrianglesHaveThickOnes) {
    const Image line = picture([] { KXDrawLine({5.9f, 10.5f}, {20.9f, 10.9f}, KXRedColor); });
    EXPECT_EQ(lit(line), 15) << "from 5 to 20, without the last pixel";
    EXPECT_EQ(boxOf(line)[0], 5);
    EXPECT_NEAR(lit(picture(primitives[6])), 200, 12);
    const Image outline = picture(primitives[5]);
    EXPECT_EQ(boxOf(outline)[1], 9) << "two pixels, above and below y 10";
    EXPECT_EQ(std::pair(outline.at(15, 10), outline.at(15, 11)), std::pair(red, black));
}

TEST_F(Drawing, EveryPrimitiveLeavesTexturingOnAndMatricesAlone) {
    std::array<GLfloat, 16> before, after;
    glTranslatef(3, 4, 0);
    glGetFloatv(GL_MODELVIEW_MATRIX, before.data());
    for (const auto& primitive : primitives) {
        glDisable(GL_TEXTURE_2D);
        EXPECT_GT(lit(picture(primitive)), 0);
        EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
        glGetFloatv(GL_MODELVIEW_MATRIX, after.data());
        EXPECT_EQ(before, after);
    }
}

TEST_F(Drawing, TheGamesEdgeFlagSurvives) {
    for (const GLenum mode : {GL_LINE, GL_FILL}) {
        glEdgeFlag(GL_FALSE);
        glPolygonMode(GL_FRONT_AND_BACK, mode);
        EXPECT_GT(lit(picture(primitives[0])), 0) << "edges show although the game has switched them off";
        EXPECT_EQ(state(GL_EDGE_FLAG)[0], GL_FALSE);
    }
}

TEST_F(Drawing, AbsurdCoordinatesAreDefined) {
    for (const float value : {NAN, INFINITY, -INFINITY, 1e30f, -1e30f}) {
        KXDrawLine({value, 1}, {2, value}, KXRedColor);
        KXDrawRect({{value, value}, {value, value}}, KXRedColor);
        KXDrawCircle({value, value}, -5, 12, KXRedColor);
        KXDrawTriangleFill({value, 1}, {2, value}, {3, 3}, {value, 0, 0, value});
    }
    window.reset();
    for (const auto& primitive : primitives) // does nothing
        primitive();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
}
} // namespace
