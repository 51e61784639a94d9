// The library computes the corners of what it draws itself. Here every form of drawing is compared, pixel by
// pixel, with the textbook way: one matrix for each quad.

#include "render/QuadStream.h"
#include "support/WindowTest.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <functional>
#include <random>

namespace {
struct Parameters {
    int sx1, sy1, sx2, sy2, width, height, x, y;
    float opacity, scale;
    int rotation, flips, transformed;
};

std::ostream& operator<<(std::ostream& out, const Parameters& p) {
    return out << "source " << p.sx1 << ' ' << p.sy1 << ' ' << p.sx2 << ' ' << p.sy2 << ", size " << p.width
               << ' ' << p.height << ", at " << p.x << ' ' << p.y << ", opacity " << p.opacity << ", scale "
               << p.scale << ", rotation " << p.rotation << ", flips " << p.flips << ", transformed "
               << p.transformed;
}

void drawTextbook(KXTexture& texture, const Parameters& p) {
    const int textureWidth = static_cast<int>(texture.size().width);
    const int textureHeight = static_cast<int>(texture.size().height);
    const int sx1 = p.sx1 < 0 ? 0 : std::min(p.sx1, textureWidth);
    const int sy1 = p.sy1 < 0 ? 0 : std::min(p.sy1, textureHeight);
    const int sx2 = p.sx2 > textureWidth ? textureWidth : std::max(sx1, p.sx2);
    const int sy2 = p.sy2 > textureHeight ? textureHeight : std::max(sy1, p.sy2);
    const int width = p.width < 0 ? sx2 - sx1 : p.width, height = p.height < 0 ? sy2 - sy1 : p.height;
    const double u1 = double(sx1) / textureWidth, u2 = double(sx2) / textureWidth;
    const double v1 = double(sy1) / textureHeight, v2 = double(sy2) / textureHeight;
    texture.bind();
    glPushMatrix();
    glColor4f(texture.tint().r, texture.tint().g, texture.tint().b, p.opacity);
    int left = p.x, top = p.y;
    if (p.transformed) {
        texture.drawingPosition(p.x, p.y, sx2 - sx1, sy2 - sy1, p.scale, p.rotation, p.flips);
        left = top = 0;
    }
    glBegin(GL_QUADS);
    glTexCoord2d(u1, v1);
    glVertex2i(left, top);
    glTexCoord2d(u2, v1);
    glVertex2i(left + width, top);
    glTexCoord2d(u2, v2);
    glVertex2i(left + width, top + height);
    glTexCoord2d(u1, v2);
    glVertex2i(left, top + height);
    glEnd();
    glPopMatrix();
}

struct DrawReference : WindowTest {
    static constexpr int textureWidth = 21, textureHeight = 13; // odd sizes show how halves are rounded
    using Picture = std::function<Image()>;
    using Drawing = std::function<void()>;

    DrawReference() {
        std::vector<Pixel> noise(textureWidth * textureHeight); // shows every wrong texel
        for (Pixel& pixel : noise) {
            const auto channel = [this] { return static_cast<std::uint8_t>(random() % 256); };
            pixel = {channel(), channel(), channel(), static_cast<std::uint8_t>(random() % 4 ? 255 : 128)};
        }
        texture._loadFromData(textureWidth, textureHeight, 4, GL_RGBA,
                              reinterpret_cast<const char*>(noise.data()));
        texture.setTint({0.9f, 1, 0.7f, 0.2f});
    }

    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    // No scale or stretch puts the border between two texels on the middle of a pixel, where the last bit of
    // a float would decide which of them shows.
    Parameters randomParameters() {
        const float scales[] = {1, 1, 2, 0.61f, 1.37f};
        const int flips[] = {0, 2, 4, 6};
        Parameters p = {};
        p.sx1 = between(-5, 18);
        p.sy1 = between(-5, 10);
        p.sx2 = between(p.sx1 - 2, 26);
        p.sy2 = between(p.sy1 - 2, 18);
        const int sourceWidth = std::min(p.sx2, textureWidth) - std::max(p.sx1, 0);
        const int sourceHeight = std::min(p.sy2, textureHeight) - std::max(p.sy1, 0);
        p.width = between(0, 2) ? -1 : std::max(0, sourceWidth * between(0, 3));
        p.height = between(0, 2) ? -1 : std::max(0, sourceHeight * between(0, 3));
        p.x = between(-10, 55);
        p.y = between(-10, 40);
        p.opacity = between(0, 1) ? 1.0f : 0.6f;
        p.scale = scales[between(0, 4)];
        p.rotation = between(0, 1) ? 90 * between(-5, 5) : between(-400, 400);
        p.flips = flips[between(0, 3)];
        p.transformed = between(0, 3) ? -1 : 0;
        return p;
    }

    // A quad turned by an odd angle may have an edge that passes through the very middle of a pixel.
    static int allowedDifference(const Parameters& p) { return p.transformed && p.rotation % 90 ? 3 : 0; }

    static Image pictureOf(const Drawing& drawing, const Picture& picture) {
        fill({0.2f, 0.3f, 0.4f, 1});
        drawing();
        return picture();
    }

    /// Compares the textbook's drawing with another; true if it shows anything.
    bool compare(const Parameters& p, const Drawing& drawing, const Picture& picture, int allowed) {
        const Image expected = pictureOf([&] { drawTextbook(texture, p); }, picture);
        const Image actual = pictureOf(drawing, picture);
        EXPECT_LE(differingPixels(expected, actual, 1), allowed) << p;
        return differingPixels(expected, pictureOf([] {}, picture)) > 0;
    }

    bool compare(const Parameters& p, const Picture& picture, int allowed) {
        return compare(
            p,
            [&] {
                texture.draw(p.sx1, p.sy1, p.sx2, p.sy2, p.width, p.height, p.x, p.y, p.opacity, p.scale,
                             p.rotation, p.flips, p.transformed);
            },
            picture, allowed);
    }

    std::mt19937 random{20};
    KXTexture texture;
};

TEST_F(DrawReference, InAWindow) {
    int shown = 0;
    for (int i = 0; i < 400; ++i) {
        const Parameters p = randomParameters();
        shown += compare(
            p, [this] { return Image::of(*window); }, allowedDifference(p));
    }
    EXPECT_GT(shown, 150);
}

TEST_F(DrawReference, InARenderTarget) {
    KXTexture target(64, 48);
    target.setRenderContext();
    int shown = 0;
    for (int i = 0; i < 200; ++i) {
        const Parameters p = randomParameters();
        shown += compare(
            p, [&target] { return Image::of(target); }, allowedDifference(p));
    }
    EXPECT_GT(shown, 75);
    target.unsetRenderContext();
}

TEST_F(DrawReference, InThreeDimensionsWithCulling) {
    window->setRenderingMode(KXWindowRenderingMode3D);
    glTranslatef(-20, -15, -60);
    int shown = 0, culled = 0;
    for (int i = 0; i < 200; ++i) {
        Parameters p = randomParameters();
        p.sx2 = textureWidth;
        p.sy2 = textureHeight;
        p.x = between(0, 20);
        p.y = between(0, 15);
        const bool seen = compare(
            p, [this] { return Image::of(*window); }, 3);
        shown += seen;
        culled += !seen && p.transformed && (p.flips == 2 || p.flips == 4);
    }
    EXPECT_GT(shown, 45);
    EXPECT_GT(culled, 20) << "a mirrored quad shows its back";
}

TEST_F(DrawReference, ShortFormsFillInTheRest) {
    const Picture picture = [this] { return Image::of(*window); };
    for (const int transformed : {-1, 0}) {
        compare(
            {0, 0, 21, 13, -1, -1, 7, 9, 1, 1, 0, 0, transformed}, [&] { texture.draw(7, 9, transformed); },
            picture, 0);
        compare(
            {0, 0, 21, 13, -1, -1, 7, 9, 0.5f, 2, 90, 2, transformed},
            [&] { texture.draw(7, 9, 0.5f, 2.0f, 90, 2, transformed); }, picture, 0);
        compare(
            {3, 2, 11, 9, -1, -1, 7, 9, 1, 1, 0, 0, transformed},
            [&] { texture.draw(3, 2, 11, 9, 7, 9, transformed); }, picture, 0);
        compare(
            {3, 2, 11, 9, -1, -1, 7, 9, 0.5f, 2, 180, 4, transformed},
            [&] { texture.draw(3, 2, 11, 9, 7, 9, 0.5f, 2.0f, 180, 4, transformed); }, picture, 0);
    }
}

TEST_F(DrawReference, NineSliceIsNineDraws) {
    struct Case {
        KXPoint position;
        KXSize size;
        int corner;
        float opacity;
    };
    const Case cases[] = {
        {{3, 4}, {40, 30}, 4, 1},   {{3.9f, 4.9f}, {40.5f, 30.5f}, 5, 0.5f},
        {{0, 0}, {8, 8}, 4, 1},     {{10, 10}, {30, 30}, 0, 1},
        {{10, 10}, {30, 30}, 9, 1}, {{10, 10}, {30, 30}, -3, 1},
        {{10, 10}, {5, 5}, 4, 1}, // smaller than its corners
        {{10, 10}, {-6, 30}, 4, 1},
    };
    const Picture picture = [this] { return Image::of(*window); };
    for (const auto& [position, size, c, opacity] : cases) {
        const int w = textureWidth, h = textureHeight;
        const auto corner = static_cast<float>(c);
        const int left = static_cast<int>(position.x), top = static_cast<int>(position.y);
        const int middleX = static_cast<int>(position.x + corner),
                  middleY = static_cast<int>(position.y + corner);
        const int right = static_cast<int>(position.x + size.width - corner);
        const int bottom = static_cast<int>(position.y + size.height - corner);
        const int width = static_cast<int>(size.width - 2 * corner);
        const int height = static_cast<int>(size.height - 2 * corner);
        const int quads[9][8] = {
            {0, 0, c, c, -1, -1, left, top},
            {w - c, 0, w, c, -1, -1, right, top},
            {0, h - c, c, h, -1, -1, left, bottom},
            {w - c, h - c, w, h, -1, -1, right, bottom},
            {c, 0, w - c, c, width, c, middleX, top},
            {c, h - c, w - c, h, width, c, middleX, bottom},
            {0, c, c, h - c, c, height, left, middleY},
            {w - c, c, w, h - c, c, height, right, middleY},
            {c, c, w - c, h - c, width, height, middleX, middleY},
        };
        const Image expected = pictureOf(
            [&] {
                for (const auto& q : quads)
                    drawTextbook(texture,
                                 {q[0], q[1], q[2], q[3], q[4], q[5], q[6], q[7], opacity, 1, 0, 0, -1});
            },
            picture);
        const Image actual = pictureOf([&] { texture.drawNineSlice(position, size, c, opacity); }, picture);
        EXPECT_EQ(differingPixels(expected, actual, 1), 0) << "corner " << c;
    }
}

TEST(Placement, TurnsAndFlipsAboutTheMiddle) {
    const struct {
        int rotation, flips;
        KXPoint expected; // of the top-left corner
    } cases[] = {
        {0, 0, {100, 200}},   {0, 2, {140, 200}},   {0, 4, {100, 220}},
        {0, 6, {110, 190}},   {90, 0, {130, 190}},  {180, 0, {140, 220}},
        {-90, 0, {110, 230}}, {450, 0, {130, 190}}, {0, 1, {100, 200}},
    };
    for (const auto& [rotation, flips, expected] : cases) {
        const KXPoint corner = _KXPlacement(100, 200, 20, 10, 2, rotation, flips)(0, 0);
        EXPECT_FLOAT_EQ(corner.x, expected.x) << rotation << ' ' << flips;
        EXPECT_FLOAT_EQ(corner.y, expected.y) << rotation << ' ' << flips;
    }
}
} // namespace
