// The library computes the corners of what it draws itself. Here every form of drawing is compared, pixel by
// pixel, with the textbook way: one matrix for each quad.

#include "RenderTest.h"

namespace {
struct Parameters {
    int sx1, sy1, sx2, sy2, width, height, x, y;
    float opacity, scale;
    int rotation, flips, transformed;
};

constexpr KXPoint at = {3, 4};

struct DrawReference : RenderTest {
    static constexpr int textureWidth = 21, textureHeight = 13; // odd sizes show how halves are rounded

    DrawReference() {
        loadNoise(texture, textureWidth, textureHeight);
        texture.setTint({0.9f, 1, 0.7f, 0.2f});
    }

    // No scale or stretch puts the border between two texels on the middle of a pixel, where the last bit of
    // a float would decide which of them shows.
    Parameters randomParameters() {
        const float scales[] = {1, 1, 2, 0.61f, 1.37f};
        const auto stretched = [this](int from, int to, int size) {
            const int source = std::min(to, size) - std::max(from, 0);
            return between(0, 2) ? -1 : std::max(0, source * between(0, 3));
        };
        const int sx1 = between(-5, 18), sx2 = between(sx1 - 2, 26), x = between(-10, 55);
        const int sy1 = between(-5, 10), sy2 = between(sy1 - 2, 18), y = between(-10, 40);
        const int width = stretched(sx1, sx2, textureWidth), height = stretched(sy1, sy2, textureHeight);
        const float opacity = between(0, 1) ? 1.0f : 0.6f, scale = scales[between(0, 4)];
        const int rotation = between(0, 1) ? 90 * between(-5, 5) : 13 * between(-27, 27);
        const int flips = 2 * between(0, 3), transformed = between(0, 3) ? -1 : 0;
        return {sx1, sy1, sx2, sy2, width, height, x, y, opacity, scale, rotation, flips, transformed};
    }

    void drawTextbook(const Parameters& p) {
        const int sx1 = std::clamp(p.sx1, 0, textureWidth), sx2 = std::clamp(p.sx2, sx1, textureWidth);
        const int sy1 = std::clamp(p.sy1, 0, textureHeight), sy2 = std::clamp(p.sy2, sy1, textureHeight);
        const int width = p.width < 0 ? sx2 - sx1 : p.width, height = p.height < 0 ? sy2 - sy1 : p.height;
        texture.bind();
        glColor4f(texture.tint().r, texture.tint().g, texture.tint().b, p.opacity);
        glPushMatrix();
        if (p.transformed)
            texture.drawingPosition(p.x, p.y, sx2 - sx1, sy2 - sy1, p.scale, p.rotation, p.flips);
        else
            glTranslatef(static_cast<float>(p.x), static_cast<float>(p.y), 0);
        glBegin(GL_QUADS);
        for (const auto& [right, lower] : {std::array{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
            glTexCoord2d(double(right ? sx2 : sx1) / textureWidth, double(lower ? sy2 : sy1) / textureHeight);
            glVertex2i(right * width, lower * height);
        }
        glEnd();
        glPopMatrix();
    }

    Image shown(const std::function<void()>& drawing) {
        fill({0.2f, 0.3f, 0.4f, 1});
        drawing();
        return KXCurrentRenderContext() == &target ? Image::of(target) : Image::of(*window);
    }
    void expectSame(const Image& expected, const std::function<void()>& drawing, int allowed = 0) {
        EXPECT_LE(differingPixels(expected, shown(drawing), 1), allowed);
    }

    KXTexture texture;
    KXTexture target{64, 48};
};

TEST_F(DrawReference, InAWindowInATextureAndInThreeDimensions) {
    enum Place { InWindow, InTexture, InSpace };
    for (const Place place : {InWindow, InTexture, InSpace}) {
        if (place == InTexture) {
            target.setRenderContext();
        } else if (place == InSpace) {
            window->setRenderContext();
            window->setRenderingMode(KXWindowRenderingMode3D);
            glTranslatef(-20, -15, -60);
        }
        int drawn = 0, culled = 0;
        for (int i = 0; i < 250; ++i) {
            SCOPED_TRACE(1000 * place + i);
            Parameters p = randomParameters();
            if (place == InSpace) // where it can be seen, but for its back
                p.sx2 = textureWidth, p.sy2 = textureHeight, p.x = between(0, 20), p.y = between(0, 15);
            const Image expected = shown([&] { drawTextbook(p); });
            const bool seen = differingPixels(expected, shown([] {})) > 0;
            drawn += seen;
            culled += !seen && p.transformed && (p.flips == KXFlipLeftRight || p.flips == KXFlipTopBottom);
            // An edge that is seen in perspective, or turned by an odd angle, may pass through the very
            // middle of pixels.
            const int allowed = place == InSpace ? 20 : p.transformed && p.rotation % 90 ? 3 : 0;
            const auto draw = [&] {
                texture.draw(p.sx1, p.sy1, p.sx2, p.sy2, p.width, p.height, p.x, p.y, p.opacity, p.scale,
                             p.rotation, p.flips, p.transformed);
            };
            expectSame(expected, draw, allowed);
        }
        EXPECT_GT(drawn, 60);
        EXPECT_GT(culled, place == InSpace ? 20 : -1) << "a mirrored quad shows its back";
    }
}

TEST_F(DrawReference, ShortFormsFillInTheRest) {
    for (const int t : {-1, 0}) {
        const Parameters whole = {0, 0, 21, 13, -1, -1, 7, 9, 1, 1, 0, 0, t},
                         turned = {0, 0, 21, 13, -1, -1, 7, 9, 0.5f, 2, 90, 2, t},
                         part = {3, 2, 11, 9, -1, -1, 7, 9, 1, 1, 0, 0, t};
        expectSame(shown([&] { drawTextbook(whole); }), [&] { texture.draw(7, 9, t); });
        expectSame(shown([&] { drawTextbook(turned); }), [&] { texture.draw(7, 9, 0.5f, 2.0f, 90, 2, t); });
        expectSame(shown([&] { drawTextbook(part); }), [&] { texture.draw(3, 2, 11, 9, 7, 9, t); });
    }
}

TEST_F(DrawReference, NineSlicesKeepTheirCornersAndStretchTheRest) {
    Pixel pixels[81]; // nine squares of three by three
    for (int i = 0; i < 81; ++i)
        pixels[i] = {static_cast<std::uint8_t>(i % 9 / 3 * 100), static_cast<std::uint8_t>(i / 27 * 100), 50,
                     255};
    load(texture, 9, 9, pixels);
    texture.setTint({1, 1, 1, 0});
    const Image image = picture([this] { texture.drawNineSlice({3.9f, 4.9f}, {38, 31}, 3, 0.5f); });
    EXPECT_EQ(boxOf(image), (Box{3, 4, 41, 35}));
    for (int y = 4; y < 35; ++y)
        for (int x = 3; x < 41; ++x) {
            const Pixel& pixel = image.at(x, y);
            ASSERT_NEAR(pixel.r, x < 6 ? 0 : x < 38 ? 50 : 100, 1) << x << ',' << y;
            ASSERT_NEAR(pixel.g, y < 7 ? 0 : y < 32 ? 50 : 100, 1) << x << ',' << y;
        }
    // Fractions are added before they are cut off.
    const auto uneven = [this] { texture.drawNineSlice({3.9f, 4.9f}, {37.5f, 30.5f}, 3); };
    EXPECT_EQ(boxOf(picture(uneven)), boxOf(image));
    expectSame(shown([this] { texture.draw(3, 4, -1); }),
               [this] { texture.drawNineSlice(at, texture.size(), 4); });
}
} // namespace
