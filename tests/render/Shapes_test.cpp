// Shapes by what they cover: areas, edges, colours, and that no pixel is drawn twice.

#include "RenderTest.h"
#include "render/ContextParts.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXPointMath.h>
#include <Kobaltrix/KXShapes.h>

#include <limits>
#include <numbers>

namespace {
struct Shapes : RenderTest {
    Shapes() : RenderTest({120, 100}) {}

    /// How many pixels a white shape covers, by what it adds to each.
    double area(const std::function<void()>& draw) {
        double sum = 0;
        for (const Pixel& pixel : picture(draw).pixels)
            sum += pixel.g / 255.0;
        return sum;
    }
};

const KXPoint bow[] = {{20, 20}, {100, 80}, {100, 20}, {20, 80}}; // crosses itself
const KXPoint arrow[] = {{10, 40}, {60, 40}, {60, 10}, {110, 50}, {60, 90}, {60, 60}, {10, 60}};
const KXPoint zigzag[] = {{20, 80}, {40, 20}, {60, 80}, {80, 20}, {100, 80}};

constexpr float pi = std::numbers::pi_v<float>;

TEST_F(Shapes, ClosedLinesAreJoinedWhereTheyBegan) {
    KXStroke outline(10, {1, 1, 1, 1});
    outline.closed = 1;
    EXPECT_EQ(
        picture([&] {
            KXDrawStroke(std::array{KXPoint{20, 20}, KXPoint{60, 20}, KXPoint{60, 60}}.data(), 3, outline);
        })
            .at(13, 17)
            .g,
        255);
}

TEST_F(Shapes, CoverTheirAreas) {
    const KXPoint corner[] = {{20, 80}, {20, 20}, {80, 20}}, repeated[] = {{20, 20}, {20, 20}, {80, 20}},
                  row[] = {{20, 50}, {40, 50}, {60, 50}, {80, 50}};
    const KXRect box = rect(10, 10, 60, 40);
    const KXPoint middle = {60, 50};
    KXShapePaint fill;
    KXStroke line(10, {1, 1, 1, 1}), square = line, round = line, bevel = line;
    const auto bend = [&](const KXStroke& stroke) { KXDrawStroke(corner, 3, stroke); };
    const auto run = [&](const KXStroke& stroke) { KXDrawStroke(row[0], row[3], stroke); };
    const struct {
        const char* what;
        std::function<void()> draw;
        double area;
    } rows[] = {{"rectangle", [&] { KXDrawRoundedRect(box, 0, fill); }, 2400},
                {"round corners", [&] { KXDrawRoundedRect(box, 10, fill); }, 2400 - (4 - pi) * 100},
                {"all round", [&] { KXDrawRoundedRect(box, 1e9f, fill); }, 800 + pi * 400},
                {"ellipse",
                 [&] {
                     KXDrawEllipse(middle, {50, -30}, fill);
                 },
                 pi * 1500},
                {"arrow", [&] { KXDrawPolygon(arrow, 7, fill); }, 1000 + 2000},
                {"bow", [&] { KXDrawPolygon(bow, 4, fill); }, 2400},
                {"slice", [&] { KXDrawSector(middle, 0, 40, 30, 120, fill); }, pi * 400},
                {"slice the other way", [&] { KXDrawSector(middle, 0, 40, 30, -60, fill); }, pi * 400},
                {"ring", [&] { KXDrawSector(middle, 20, 40, 0, 360, fill); }, pi * 1200},
                {"half a ring", [&] { KXDrawSector(middle, 20, 40, 0, 180, fill); }, pi * 600},
                {"butt", [&] { run(line); }, 600},
                {"square", [&] { run(square); }, 700},
                {"round", [&] { run(round); }, 600 + pi * 25},
                {"miter", [&] { bend(line); }, 1200},
                {"bevel", [&] { bend(bevel); }, 1200 - 12.5},
                {"round join", [&] { bend(round); }, 1200 - 25 + pi * 25 * 5 / 4},
                {"outline", [&] { KXDrawRoundedRect(box, 0, line); }, 10 * 200},
                {"repeated", [&] { KXDrawStroke(repeated, 3, line); }, 600},
                {"dot", [&] { KXDrawStroke(bow, 1, round); }, pi * 25},
                {"arc", [&] { KXDrawArc(middle, 35, 0, 90, line); }, pi / 4 * (1600 - 900)},
                {"circle", [&] { KXDrawArc(middle, 35, 10, 900, line); }, pi * (1600 - 900)},
                {"curve", [&] { KXDrawCurve(row[0], row[1], row[2], row[3], line); }, 600},
                {"spline", [&] { KXDrawSpline(row, 4, line); }, 600}};
    for (const int smooth : {0, 1}) {
        square.cap = KXCapSquare;
        round.cap = KXCapRound;
        round.join = KXJoinRound;
        bevel.join = KXJoinBevel;
        for (int* each : {&fill.smooth, &line.smooth, &square.smooth, &round.smooth, &bevel.smooth})
            *each = smooth;
        for (const auto& each : rows)
            EXPECT_NEAR(area(each.draw), each.area, std::max(4.0, each.area * 0.02)) << each.what << smooth;
    }
}

// However lines overlap and cross themselves.
TEST_F(Shapes, AreEvenWhereTheyAreNotOpaque) {
    for (const int smooth : {0, 1})
        for (const KXLineJoin join : {KXJoinMiter, KXJoinBevel, KXJoinRound})
            for (const KXLineCap cap : {KXCapButt, KXCapSquare, KXCapRound}) {
                KXStroke stroke(11, {1, 1, 1, 0.5f});
                stroke.join = join;
                stroke.cap = cap;
                stroke.smooth = smooth;
                const Image image = picture([&] { KXDrawStroke(zigzag, 5, stroke); });
                for (const Pixel& pixel : image.pixels)
                    ASSERT_LE(pixel.r, 129) << smooth << join << cap;
                EXPECT_NEAR(image.at(40, 60).r, 0, 1);
                EXPECT_NEAR(image.at(30, 50).r, 128, 1) << "in the middle of a piece";
            }
}

TEST_F(Shapes, GradientsRunFromEndToEnd) {
    KXShapePaint paint({1, 0, 0, 1});
    paint.endColor = {0, 0, 1, 1};
    paint.gradient = KXGradientLinear;
    paint.from = {20, 0};
    paint.to = {100, 0};
    const Image linear = picture([&] { KXDrawRoundedRect(rect(0, 0, 120, 100), 0, paint); });
    for (int x = 0; x < 120; ++x) {
        const float t = std::clamp((static_cast<float>(x) + 0.5f - 20) / 80, 0.0f, 1.0f);
        EXPECT_NEAR(linear.at(x, 50).r, 255 * (1 - t), 2) << x;
        EXPECT_NEAR(linear.at(x, 7).b, 255 * t, 2) << x;
    }
    paint.gradient = KXGradientRadial;
    paint.from = {60, 50};
    paint.to = {60, 90};
    const Image radial = picture([&] { KXDrawRoundedRect(rect(0, 0, 120, 100), 0, paint); });
    for (int y = 0; y < 100; y += 3)
        for (int x = 0; x < 120; x += 3) {
            const KXPoint at = {static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f};
            const float t = std::min(1.0f, KXDistance(at, {60, 50}) / 40);
            EXPECT_NEAR(radial.at(x, y).b, 255 * t, 8) << x << ' ' << y;
        }
    paint.to = paint.from; // of no length: all of it lies beyond
    EXPECT_EQ(picture([&] { KXDrawEllipse({60, 50}, {9, 9}, paint); }).at(60, 50), blue);
}

TEST_F(Shapes, ReachNeitherPixelsTheyDoNotCoverNorDrawWhatIsNoShape) {
    const Image smooth = picture([] {
        KXShapePaint paint;
        paint.smooth = 1;
        KXDrawRoundedRect({{10.25f, 10.5f}, {20, 20}}, 0, paint);
    });
    EXPECT_NEAR(smooth.at(10, 20).r, 191, 2);
    EXPECT_NEAR(smooth.at(20, 10).r, 128, 2);
    EXPECT_EQ(boxOf(smooth), (Box{10, 10, 31, 31}));
    EXPECT_NEAR(area([] {
                    KXDrawStroke({10, 50.5f}, {110, 50.5f}, KXStroke(0.25f, {1, 1, 1, 1}));
                }),
                25, 1)
        << "thinner than a pixel is paler";

    constexpr float nan = std::numeric_limits<float>::quiet_NaN(), huge = std::numeric_limits<float>::max();
    const KXPoint bad[] = {{nan, 0}, {10, huge}, {50, 50}};
    const KXShapePaint white;
    const KXStroke stroke(10, {1, 1, 1, 1});
    const Image none = picture([&] {
        KXDrawStroke(bad, 3, stroke);
        KXDrawStroke(nullptr, 3, stroke);
        KXDrawStroke(bow, -1, stroke);
        KXDrawStroke(bow, 1, stroke);
        for (const float width : {0.0f, -4.0f, nan, huge})
            KXDrawStroke(bow, 4, KXStroke(width, {1, 1, 1, 1}));
        KXDrawPolygon(bow, 2, white);
        KXDrawPolygon(bad, 3, white);
        KXDrawEllipse({50, 50}, {0, 10}, white);
        KXDrawEllipse({nan, 50}, {9, 9}, stroke);
        KXDrawRoundedRect({{10, 10}, {-5, 5}}, 2, white);
        KXDrawRoundedRect({{10, 10}, {nan, 5}}, 2, stroke);
        KXDrawSector({50, 50}, 20, 10, 0, 90, white);
        KXDrawSector({50, 50}, 0, 10, 5, 5, white);
        KXDrawArc({50, 50}, 10, nan, 5, stroke);
        KXDrawCurve({0, 0}, {nan, 0}, {9, 9}, {30, 30}, stroke);
        KXDrawSpline(bad, 3, stroke);
    });
    EXPECT_EQ(boxOf(none), nothing);
    KXStroke spike = stroke; // reaches no further than its limit, and not at all
    const KXPoint sharp[] = {{10, 48}, {60, 50}, {10, 52}};
    EXPECT_LT(boxOf(picture([&] { KXDrawStroke(sharp, 3, spike); }))[2], 66);
    spike.miterLimit = nan;
    EXPECT_LT(boxOf(picture([&] { KXDrawStroke(sharp, 3, spike); }))[2], 66);
}

TEST_F(Shapes, LookRoundAndSmoothThroughACamera) {
    KXShapePaint paint;
    paint.smooth = 1;
    const Image natural = picture([&] { KXDrawEllipse({60, 50}, {40, 40}, paint); });
    KXCamera camera;
    camera.zoom = 100;
    const Image seen = picture([&] {
        KXPushCamera(camera);
        KXDrawEllipse({0, 0}, {0.4f, 0.4f}, paint);
        KXPopCamera();
    });
    EXPECT_EQ(seen.differing(natural, 3), 0);
}

TEST_F(Shapes, AreTheSameInABatchAndInATexture) {
    const auto scene = [this](unsigned seed) {
        random.seed(seed);
        const auto place = [this] { return rect(between(-20, 140), between(-20, 120), 0, 0).origin; };
        const auto channel = [this] { return static_cast<float>(between(0, 4)) / 4; };
        for (int i = 0; i < 30; ++i) {
            KXPoint points[9];
            const int count = between(1, 9);
            for (KXPoint& point : points)
                point = place();
            KXShapePaint paint({channel(), channel(), channel(), channel()});
            KXStroke stroke(static_cast<float>(between(1, 40)) / 3, paint.color);
            stroke.join = static_cast<KXLineJoin>(between(0, 2));
            stroke.cap = static_cast<KXLineCap>(between(0, 2));
            stroke.closed = between(0, 1);
            switch (between(0, 5)) {
            case 0:
                KXDrawPolygon(points, count, paint);
                break;
            case 1:
                KXDrawStroke(points, count, stroke);
                break;
            case 2:
                KXDrawSpline(points, count, stroke);
                break;
            case 3:
                KXDrawEllipse(points[0], {9, 17}, paint);
                break;
            case 4:
                KXDrawRectFill({points[0], {20, 10}}, paint.color);
                break;
            default:
                KXDrawSector(points[0], 5, 20, points[1].x, points[1].y, paint);
            }
        }
    };
    for (unsigned seed = 1; seed <= 8; ++seed) {
        _KXSetCurrentDriver(seed % 2 ? _KXDriver::Software : _KXDriver::Hardware);
        const Image atOnce = picture([&] { scene(seed); });
        const Image inBatch = picture([&] {
            KXBeginDrawBatch();
            scene(seed);
            KXEndDrawBatch();
        });
        EXPECT_EQ(atOnce.differing(inBatch), 0) << seed;
        KXTexture texture(120, 100);
        texture.setRenderContext();
        KXClear({0, 0, 0, 1});
        scene(seed);
        texture.unsetRenderContext();
        window->setRenderContext();
        Image inTexture = Image::of(texture);
        for (Pixel& pixel : inTexture.pixels)
            pixel.a = 255; // which blends like the other channels
        EXPECT_LT(atOnce.differing(inTexture, 1), 40) << "but for where edges meet a pixel's middle";
    }
}
} // namespace
