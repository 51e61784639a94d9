// Drawing by names: compared with the textbook's matrices, and with where it is said to lie.

#include "RenderTest.h"

#include <Kobaltrix/KXError.h>

#include <limits>

namespace {
struct DrawOptions : RenderTest {
    static constexpr int width = 21, height = 13;

    DrawOptions() { loadNoise(texture, width, height); }

    float number(int low, int high) { return static_cast<float>(between(10 * low, 10 * high)) / 10 + 0.03f; }

    void drawTextbook(const KXDrawOptions& o) {
        const KXRect& part = o.source;
        const float extentX = o.size.width < 0 ? part.size.width : o.size.width,
                    extentY = o.size.height < 0 ? part.size.height : o.size.height;
        texture.bind();
        glColor4f(o.tint.r, o.tint.g, o.tint.b, o.tint.a);
        glPushMatrix();
        glTranslatef(o.position.x, o.position.y, 0);
        glRotatef(o.rotation, 0, 0, 1);
        glScalef(o.scale.width, o.scale.height, 1);
        glTranslatef(extentX / 2 - o.origin.x * extentX / part.size.width,
                     extentY / 2 - o.origin.y * extentY / part.size.height, 0);
        if (o.flip == KXFlipDiagonal)
            glRotatef(180, 1, 1, 0);
        else if (o.flip)
            glScalef(o.flip == KXFlipLeftRight ? -1 : 1, o.flip == KXFlipTopBottom ? -1 : 1, 1);
        glBegin(GL_QUADS);
        for (const auto& [x, y] : {std::array{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
            glTexCoord2f((part.origin.x + float(x) * part.size.width) / width,
                         (part.origin.y + float(y) * part.size.height) / height);
            glVertex2f((float(x) - 0.5f) * extentX, (float(y) - 0.5f) * extentY);
        }
        glEnd();
        glPopMatrix();
    }

    KXTexture texture;
};

TEST_F(DrawOptions, AreWhatMatricesWouldDo) {
    int drawn = 0;
    for (int i = 0; i < 300; ++i) {
        KXDrawOptions o;
        o.flip = static_cast<KXFlip>(2 * between(0, 3));
        o.position = {number(10, 50), number(10, 40)};
        o.origin = {number(-5, 25), number(-5, 15)};
        o.rotation = between(0, 1) ? number(-400, 400) : static_cast<float>(90 * between(-4, 4));
        o.scale = {number(-2, 2), number(-2, 2)};
        o.tint = {number(0, 1), 1, 0.6f, number(0, 1)};
        o.source = rect(between(0, 9), between(0, 5), between(1, 12), between(1, 8));
        if (between(0, 1))
            o.size = {number(1, 30), number(1, 30)};
        const Image expected = picture([&] { drawTextbook(o); }), image = picture([&] { texture.draw(o); });
        EXPECT_LE(differingPixels(expected, image, 1), 6) << i; // edges through the middle of pixels
        const KXRect bounds = texture.placed(o).bounds;
        const Box box = boxOf(image);
        if (box == nothing)
            continue;
        ++drawn;
        EXPECT_TRUE(float(box[0]) > bounds.origin.x - 1 && float(box[1]) > bounds.origin.y - 1 &&
                    float(box[2]) < bounds.origin.x + bounds.size.width + 1 &&
                    float(box[3]) < bounds.origin.y + bounds.size.height + 1)
            << i;
    }
    EXPECT_GT(drawn, 150);
}

TEST_F(DrawOptions, DefaultsEdgesAndNonsense) {
    const auto box = [this](const KXDrawOptions& options) {
        return boxOf(picture([&] { texture.draw(options); }));
    };
    constexpr float infinite = std::numeric_limits<float>::infinity();
    texture.setTint({1, 1, 0, 0}); // its alpha does not count
    const Image whole = picture([this] { texture.draw({}); });
    EXPECT_EQ(differingPixels(whole, picture([this] { texture.draw(0, 0, -1); })), 0);
    const std::pair<KXDrawOptions, Box> rows[] = {
        {{.position = {3, 4}, .source = {{-5, 10}, {infinite, 90}}},
         {3, 4, 3 + width, 7}}, // cut at the edges
        {{.position = {3, 4}, .source = {{-5, -3}, {12, 9}}}, {3, 4, 10, 10}},
        {{.position = {20, 20}, .scale = {-1, -2}}, {0, 0, 20, 20}},
        {{.flip = KXFlipLeftRight, .position = {20, 20}}, {20, 20, 41, 33}},
        {{.position = {20, 20}, .origin = {1, 1}, .size = {42, 26}}, {18, 18, 60, 44}}, // origin in pixels
        {{.position = {NAN, 0}}, nothing},
        {{.origin = {0, infinite}}, nothing},
        {{.rotation = infinite}, nothing},
        {{.scale = {0, 1}}, nothing},
        {{.scale = {1e30f, 1}}, nothing},
        {{.source = {{2, 2}, {0, 5}}}, nothing},
        {{.source = {{NAN, 2}, {3, 5}}}, nothing},
        {{.source = {{22, 0}, {3, 5}}}, nothing},
        {{.size = {5, 0}}, nothing},
        {{.tint = {NAN, NAN, NAN, 0}}, nothing},
    };
    for (const auto& [options, expected] : rows)
        EXPECT_EQ(box(options), expected) << &options - &rows[0].first;
    EXPECT_EQ(KXTexture().placed({}).bounds.size.width, 0);
    _KXClearError();
    texture.draw(9, 9, between(1, 1), 3, 0, 0, -1); // an opacity and a scale, meant well
    EXPECT_NE(std::string(KXError()).find("1.0f"), std::string::npos);
}
} // namespace
