// Whatever is drawn looks the same in a batch as at once, and costs the draw calls it ought to.

#include "render/DrawBatch.h"

#include "text/TextTest.h"

#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXTexture.h>

#include <SDL_opengl.h>

#include <array>
#include <random>

namespace {
struct DrawBatch : TextTest {
    static constexpr int width = 320, height = 64;

    DrawBatch() : texture(noise(21, 13)), other(noise(32, 32)), font(testFont(), KXAliasModeTexture) {
        _KXEndDrawStatistics();
    }

    std::unique_ptr<KXTexture> noise(int w, int h) {
        std::vector<Pixel> pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
        for (Pixel& pixel : pixels)
            pixel = {channel(), channel(), channel(), static_cast<std::uint8_t>(random() % 4 ? 255 : 128)};
        auto result = std::make_unique<KXTexture>();
        result->_loadFromData(w, h, 4, GL_RGBA, reinterpret_cast<const char*>(pixels.data()));
        return result;
    }
    std::uint8_t channel() { return static_cast<std::uint8_t>(random() % 256); }
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    float fraction() { return static_cast<float>(between(0, 100)) / 100; }
    KXColor color() { return {fraction(), fraction(), fraction(), between(0, 2) ? 1 : fraction()}; }
    KXPoint point() {
        return {static_cast<float>(between(-10, width)), static_cast<float>(between(-10, height))};
    }
    KXRect rect() {
        return {point(), {static_cast<float>(between(0, 60)), static_cast<float>(between(0, 30))}};
    }

    /// One of everything that draws or changes what drawing depends on.
    void randomCall();
    /// Some of them, always the same for a seed.
    void scene(unsigned seed);

    std::mt19937 random{4};
    std::unique_ptr<KXTexture> texture, other;
    KXTexture target{width, height};
    KXFont font;
};

void DrawBatch::randomCall() {
    KXTexture& any = between(0, 2) ? *texture : *other;
    const int x = between(-10, width), y = between(-10, height);
    switch (between(0, 19)) {
    case 0:
    case 1:
    case 2:
    case 3:
        any.draw(x, y, -1);
        break;
    case 4:
        any.draw(x, y, fraction(), 1 + fraction(), between(-400, 400), 2 * between(0, 3), between(-1, 0));
        break;
    case 5:
        any.drawNineSlice(point(), {60, 30}, 4, fraction());
        break;
    case 6:
    case 7:
        KXDrawRectFill(rect(), color());
        break;
    case 8:
        KXDrawRect(rect(), color());
        break;
    case 9:
        KXDrawCircleFill(point(), between(0, 20), between(0, 20), color());
        break;
    case 10:
        KXDrawCircle(point(), between(0, 20), between(0, 20), color());
        break;
    case 11:
        KXDrawTriangleFill(point(), point(), point(), color());
        break;
    case 12:
        KXDrawTriangle(point(), point(), point(), color());
        break;
    case 13:
        KXDrawLine(point(), point(), color());
        break;
    case 14:
        font.print(point(), color(), "Score {C1,0.5,0,1}%d{EC} points", between(0, 9999));
        break;
    case 15:
        any.setTint(color());
        break;
    case 16:
        window->setClipTo({{20, 5}, {static_cast<float>(between(10, 300)), 50}});
        break;
    case 17:
        window->unsetClip();
        break;
    case 18:
        if (between(0, 3) == 0)
            other->clear();
        else
            font.setSize(between(8, 12));
        break;
    default:
        target.setRenderContext();
        KXDrawRectFill(rect(), color());
        any.draw(x, y, -1);
        target.unsetRenderContext();
        window->setRenderContext();
        target.draw(0, 0, 0.5f, 1.0f, 0, 0, -1);
        break;
    }
}

void DrawBatch::scene(unsigned seed) {
    random.seed(seed);
    texture = noise(21, 13);
    KXSetTextureMode(2); // smooth
    other = noise(32, 32);
    KXSetTextureMode(1);
    target.clear();
    font.setSize(10);
    window->unsetClip();
    fill({0.1f, 0.2f, 0.3f, 1});
    const bool blends = between(0, 7) != 0;
    if (!blends)
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    for (int call = between(1, 30); call > 0; --call)
        randomCall();
    KXFlushDrawBatch();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

// What a call leaves behind and a game may count on.
std::array<float, 6> leftBehind() {
    GLint texture = 0;
    std::array<float, 6> state = {};
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
    glGetFloatv(GL_CURRENT_COLOR, state.data());
    state[4] = glIsEnabled(GL_TEXTURE_2D);
    state[5] = texture ? 1 : 0;
    return state;
}

TEST_F(DrawBatch, RandomScenesLookTheSame) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        scene(seed);
        const Image expected = Image::of(*window);
        const auto state = leftBehind();
        KXBeginDrawBatch();
        scene(seed);
        EXPECT_EQ(leftBehind(), state) << seed;
        const Image actual = Image::of(*window);
        KXEndDrawBatch();
        ASSERT_EQ(differingPixels(expected, actual), 0) << seed;
    }
}

// What a block holds, 16384 corners, and what leaves in one call, 1024 corners.
constexpr int quadsInABlock = 4096, quadsInACall = 256;

TEST_F(DrawBatch, CallsOfKnownScenes) {
    const auto sprites = [this](int count) {
        for (int i = 0; i < count; ++i)
            texture->draw(i % width, i % height, -1);
    };
    const auto label = [this](const char* text) { font.print({5, 5}, white, "%s", text); };
    label("Score 0123456789"); // glyphs are made once
    const struct {
        const char* what;
        std::function<void()> scene;
        int quads, lines, glyphs, drawCalls, binds, flushes;
    } scenes[] = {
        {"nothing", [] {}, 0, 0, 0, 0, 0, 0},
        {"sprites of one texture", [&] { sprites(10000); }, 10000, 0, 0, 40, 3, 3}, // of 256 each
        {"as many as a block holds", [&] { sprites(quadsInABlock); }, quadsInABlock, 0, 0,
         quadsInABlock / quadsInACall, 1, 1},
        {"two textures by turns",
         [&] {
             for (int i = 0; i < 10; ++i) {
                 sprites(1);
                 other->draw(0, 0, -1);
             }
         },
         20, 0, 0, 20, 20, 1},
        {"fills between sprites",
         [&] {
             for (int i = 0; i < 10; ++i) {
                 KXDrawRectFill({{0, 0}, {5, 5}}, white);
                 sprites(1);
                 KXDrawRect({{0, 0}, {5, 5}}, white);
             }
         },
         60, 0, 0, 1, 1, 1},
        {"a nine-slice and a circle",
         [&] {
             texture->drawNineSlice({0, 0}, {50, 50}, 4);
             KXDrawCircleFill({20, 20}, 10, 8, white);
         },
         9 + 6, 0, 0, 1, 1, 1},
        {"buttons",
         [&] {
             for (int i = 0; i < 5; ++i) {
                 KXDrawRectFill({{0, 0}, {50, 15}}, {0.5f, 0.5f, 0.5f, 1});
                 KXDrawRect({{0, 0}, {50, 15}}, white);
                 label("Score 10");
             }
         },
         5 * (1 + 4 + 7), 0, 35, 1, 1, 1},
        {"lines",
         [&] {
             KXDrawLine({0, 0}, {9, 9}, white);
             KXDrawCircle({20, 20}, 10, 6, white);
             KXDrawTriangle({0, 0}, {9, 0}, {0, 9}, white);
         },
         0, 1 + 6 + 3, 0, 2, 0, 1},
    };
    for (const auto& [what, draw, quads, lines, glyphs, drawCalls, binds, flushes] : scenes) {
        window->swapBuffers();
        KXBeginDrawBatch();
        draw();
        KXEndDrawBatch();
        const KXDrawStatistics counted = KXCurrentDrawStatistics();
        EXPECT_EQ(counted.quads, quads) << what;
        EXPECT_EQ(counted.lines, lines) << what;
        EXPECT_EQ(counted.glyphs, glyphs) << what;
        EXPECT_EQ(counted.drawCalls, drawCalls) << what;
        EXPECT_EQ(counted.textureBinds, binds) << what;
        EXPECT_EQ(counted.flushes, flushes) << what;
        EXPECT_EQ(counted.flushesBecause[KXDrawFlushFull], flushes > 1 ? flushes - 1 : 0) << what;
        EXPECT_EQ(counted.textureUploads, 0) << what;
        window->swapBuffers();
        EXPECT_EQ(KXLastDrawStatistics().drawCalls, drawCalls) << what;
        EXPECT_EQ(KXCurrentDrawStatistics().drawCalls, 0) << what;
        // At once every sprite, fill, outline and text is a call of its own.
        draw();
        EXPECT_EQ(KXCurrentDrawStatistics().quads, quads) << what;
        EXPECT_EQ(KXCurrentDrawStatistics().flushes, 0) << what;
    }
}

TEST_F(DrawBatch, LeavesByItselfWhenItMust) {
    KXWindow second("Second", {32, 32});
    const struct {
        KXDrawFlushReason reason;
        std::function<void()> act;
    } rows[] = {
        {KXDrawFlushRequest, [] { KXFlushDrawBatch(); }},
        {KXDrawFlushRequest, [this] { other->bind(); }},
        {KXDrawFlushRequest, [this] { other->drawingPosition(0, 0, 1, 1, 1, 0, 0); }},
        {KXDrawFlushTarget, [this] { target.setRenderContext(); }},
        {KXDrawFlushTarget, [this] { target.unsetRenderContext(); }},
        {KXDrawFlushTarget, [&] { second.setRenderContext(); }},
        {KXDrawFlushTarget, [this] { window->setRenderContext(); }},
        {KXDrawFlushClip,
         [this] {
             window->setClipTo({{0, 0}, {10, 10}});
         }},
        {KXDrawFlushClip, [this] { window->unsetClip(); }},
        {KXDrawFlushProjection, [this] { window->setRenderingMode(KXWindowRenderingMode3D); }},
        {KXDrawFlushProjection, [this] { window->setRenderingMode(KXWindowRenderingMode2D); }},
        {KXDrawFlushTextureChange, [this] { texture->_loadFromData(1, 1, 4, GL_RGBA, "1234"); }},
        {KXDrawFlushTextureChange, [this] { texture->clear(); }},
        {KXDrawFlushTextureChange, [this] { texture = noise(4, 4); }},
        {KXDrawFlushRead,
         [this] {
             target.getPixel({0, 0}, 0);
         }},
        {KXDrawFlushRead, [this] { delete window->copyTexture(); }},
        {KXDrawFlushText,
         [] {
             KXFont(testFont(), KXAliasModePolygon).print({0, 0}, white, "x");
         }},
        {KXDrawFlushSwap, [this] { window->swapBuffers(); }},
        {KXDrawFlushFrame, [] { KXPostLogicLoop(); }},
        {KXDrawFlushEnd, [] { KXEndDrawBatch(); }},
    };
    KXBeginDrawBatch();
    for (const auto& [reason, act] : rows) {
        if (&second == KXCurrentRenderContext())
            KXDrawRectFill({{0, 0}, {9, 9}}, white);
        else
            texture->draw(0, 0, -1);
        const int before = KXCurrentDrawStatistics().flushesBecause[reason];
        act();
        const KXDrawStatistics after =
            reason == KXDrawFlushSwap ? KXLastDrawStatistics() : KXCurrentDrawStatistics();
        EXPECT_GE(after.flushesBecause[reason], before + 1) << &reason - &rows[0].reason << " " << reason;
    }
    const int before = KXCurrentDrawStatistics().drawCalls;
    texture->draw(0, 0, -1); // the batch has ended
    EXPECT_EQ(KXCurrentDrawStatistics().drawCalls, before + 1);
}

TEST_F(DrawBatch, NestsAndStaysOpenAcrossFrames) {
    KXEndDrawBatch(); // none open
    KXBeginDrawBatch();
    KXBeginDrawBatch();
    KXDrawRectFill({{0, 0}, {10, 10}}, white);
    KXEndDrawBatch();
    EXPECT_EQ(KXCurrentDrawStatistics().drawCalls, 0);
    window->swapBuffers();
    EXPECT_EQ(KXLastDrawStatistics().drawCalls, 1);
    KXDrawRectFill({{0, 0}, {10, 10}}, white);
    EXPECT_EQ(KXCurrentDrawStatistics().drawCalls, 0);
    KXEndDrawBatch();
    EXPECT_EQ(KXCurrentDrawStatistics().drawCalls, 1);

    KXBeginDrawBatch();
    KXDrawRectFill({{0, 0}, {10, 10}}, white);
    texture.reset();
    other.reset();
    window.reset(); // what was collected is gone with its window
    KXEndDrawBatch();
    KXFlushDrawBatch();
}
} // namespace
