// Whatever is drawn looks the same in a batch as at once, and costs no more draw calls than it must.

#include "render/DrawBatch.h"

#include "render/ClipScope.h"
#include "render/ContextParts.h"
#include "render/GLFunctions.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXShader.h>
#include <Kobaltrix/KXShapes.h>

namespace {
struct DrawBatch : RenderTest {
    static constexpr int width = 320, height = 64;

    DrawBatch() : RenderTest({width, height}) {
        loadNoise(*texture, 21, 13);
        loadNoise(other, 32, 32);
    }

    float fraction() { return static_cast<float>(between(0, 100)) / 100; }
    KXColor color() { return {fraction(), fraction(), fraction(), between(0, 2) ? 1 : fraction()}; }
    KXPoint point() { return rect(between(-10, width), between(-10, height), 0, 0).origin; }
    KXRect anyRect() { return {point(), rect(0, 0, between(0, 60), between(0, 30)).size}; }
    KXTexture& any() { return between(0, 2) ? *texture : other; }
    /// As many of one kind as make up calls of their own.
    void crowd(const std::function<void(int x, int y)>& draw) {
        for (int i = 0; i < 90; ++i)
            draw(between(-10, width), between(-10, height));
    }

    void showTarget() {
        target.unsetRenderContext();
        window->setRenderContext();
        target.draw(0, 0, 0.5f, 1.0f, 0, 0, -1);
    }
    static std::unique_ptr<KXShader> makeShader() {
        return std::make_unique<KXShader>(
            "uniform vec4 extra; void main() {\n"
            "    gl_FragColor = texture2D(kxTexture, kxPlace) * kxColor.bgra * extra;\n"
            "}");
    }
    void expectSameScenes(unsigned count);
    /// Some of everything that draws or changes what drawing depends on, always the same for a seed.
    void scene(unsigned seed);

    std::unique_ptr<KXTexture> texture = std::make_unique<KXTexture>();
    KXTexture other, target{width, height};
    /// A smooth texture that is turned or not of its own size comes out a step of 255 apart in software, as
    /// its neighbours in the call reach out of view or not.
    int tolerance = 0;
    KXFont font{testFont(), KXAliasModeTexture}, polygons{testFont(), KXAliasModePolygon};
    std::unique_ptr<KXShader> shader = makeShader();
};

void DrawBatch::scene(unsigned seed) {
    random.seed(seed);
    tolerance = 0;
    loadNoise(*texture, 21, 13);
    KXSetTextureMode(2); // smooth
    loadNoise(other, 32, 32);
    KXSetTextureMode(1);
    target.clear();
    target.setPremultiplied(0);
    shader->setColor("extra", {1, 1, 1, 1});
    font.setSize(10);
    polygons.setSize(15);
    window->unsetClip();
    fill({0.1f, 0.2f, 0.3f, 1});
    std::vector<std::unique_ptr<_KXClipScope>> scopes; // as widgets have them
    const int variation = between(0, 15);
    glBlendFunc(GL_SRC_ALPHA, variation < 2 ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, variation == 2 ? GL_DECAL : GL_MODULATE);
    const std::function<void()> calls[] = {
        [&] { any().draw(between(-10, width), between(-10, height), -1); },
        [&] { any().draw(between(-10, width), between(-10, height), -1); },
        [&] {
            any().draw(between(0, width), 9, fraction(), 2.0f, between(-400, 400), 2 * between(0, 3), -1);
        },
        [&] { any().drawNineSlice(point(), other.size(), 4, fraction()); },
        [&, opacity = fraction()] {
            crowd([&](int x, int y) { other.draw(x, y, opacity, 1.0f, 0, 0, -1); });
        },
        [&] { crowd([this](int x, int y) { texture->draw(x, y, -1); }); },
        [&, paint = color()] { crowd([&](int x, int y) { KXDrawRectFill(rect(x, y, 9, 5), paint); }); },
        [&] { KXDrawRectFill(anyRect(), color()); },
        [&] { KXDrawRect(anyRect(), color()); },
        [&] { KXDrawCircleFill(point(), between(0, 20), between(0, 20), color()); },
        [&] { KXDrawCircle(point(), between(0, 20), between(0, 20), color()); },
        [&] { KXDrawTriangle(point(), point(), point(), color()); },
        [&] { KXDrawLine(point(), point(), color()); },
        [&] { font.print(point(), color(), "Score {C1,0.5,0,1}%d{EC} points", between(0, 9999)); },
        [&] { font.setSize(between(8, 12)); },
        [&] { polygons.print(point(), color(), "Outline"); },
        [&] {
            const KXPoint points[] = {point(), point(), point(), point()};
            KXStroke stroke(9 * fraction(), color());
            stroke.join = static_cast<KXLineJoin>(between(0, 2));
            stroke.smooth = between(0, 1);
            between(0, 1) ? KXDrawStroke(points, 4, stroke) : KXDrawSpline(points, 4, stroke);
            KXShapePaint paint(color());
            paint.gradient = static_cast<KXGradient>(between(0, 2));
            paint.to = point();
            paint.smooth = between(0, 1);
            between(0, 1) ? KXDrawPolygon(points, 4, paint) : KXDrawEllipse(point(), other.size(), paint);
        },
        [&] { window->setClipTo(rect(20, 5, between(10, 300), 50)); },
        [&] { window->unsetClip(); },
        [&] {
            const KXPoint size = point();
            any().draw({.flip = static_cast<KXFlip>(2 * between(0, 3)),
                        .position = point(),
                        .rotation = 33 * fraction(),
                        .scale = {fraction() + 0.51f, 1},
                        .tint = color(),
                        .blend = static_cast<KXBlendMode>(between(0, KXBlendErase)),
                        .size = {size.x, size.y}});
        },
        [&] { KXPushBlendMode(static_cast<KXBlendMode>(between(0, KXBlendErase))); },
        [&] { KXPopBlendMode(); },
        [&] {
            KXCamera camera;
            camera.centre = point();
            camera.zoom =
                between(0, 2) ? 1 : 0.613f + fraction(); // no borders of texels on middles of pixels
            camera.rotation = between(0, 2) ? 0 : 360 * fraction();
            tolerance |= camera.zoom != 1 || camera.rotation != 0;
            if (!between(0, 3))
                camera.area = {point(), {98, 40}};
            KXPushCamera(camera);
        },
        [&] { KXPopCamera(); },
        [&] { KXPushShader(between(0, 2) ? shader.get() : nullptr); },
        [&] { KXPopShader(); },
        [&] { shader->setColor("extra", color()); },
        [&] { any().draw({.position = point(), .tint = color(), .shader = shader.get()}); },
        [&] { target.setPremultiplied(between(0, 1)); },
        [&] { other.clear(); },
        [&] { target.setRenderContext(); },
        [&] { showTarget(); },
        [&] { scopes.push_back(std::make_unique<_KXClipScope>(anyRect())); },
        [&] { scopes.push_back(std::make_unique<_KXClipScope>(rect(10, 5, 200, 60))); },
        [&] { scopes.resize(scopes.empty() ? 0 : scopes.size() - 1); },
    };
    for (int call = between(1, 30); call > 0; --call)
        calls[between(0, static_cast<int>(std::size(calls)) - 1)]();
    while (!scopes.empty())
        scopes.pop_back();
    for (int i = 0; i < 30; ++i)
        KXPopBlendMode(), KXPopCamera(), KXPopShader();
    showTarget();
    KXFlushDrawBatch();
}

// What a call leaves behind and a game may count on.
std::array<float, 10> leftBehind() {
    std::array<float, 10> values = {};
    glGetFloatv(GL_CURRENT_COLOR, values.data());
    values[4] = glIsEnabled(GL_TEXTURE_2D);
    glGetFloatv(GL_LINE_WIDTH, &values[5]);
    values[6] = RenderTest::state(GL_TEXTURE_BINDING_2D)[0] != 0;
    values[7] = glIsEnabled(GL_COLOR_ARRAY);
    glGetTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &values[8]);
    values[9] = static_cast<float>(RenderTest::state(GL_ARRAY_BUFFER_BINDING)[0]);
    return values;
}

constexpr _KXDriver drivers[] = {_KXDriver::Software, _KXDriver::Hardware};

void DrawBatch::expectSameScenes(unsigned count) {
    for (unsigned seed = 0; seed < count; ++seed) {
        _KXSetCurrentDriver(drivers[seed % 2]);
        scene(seed);
        const Image expected = Image::of(*window);
        const auto left = leftBehind();
        for (const _KXDriver driver : drivers) {
            _KXSetCurrentDriver(driver);
            KXBeginDrawBatch();
            scene(seed);
            EXPECT_EQ(leftBehind(), left) << seed;
            ASSERT_EQ(differingPixels(expected, Image::of(*window), tolerance), 0) << seed;
            KXEndDrawBatch();
        }
    }
}

TEST_F(DrawBatch, RandomScenesLookTheSame) { expectSameScenes(300); }

TEST_F(DrawBatch, RandomScenesLookTheSameWithoutPrograms) {
    _KXGL.createProgram = nullptr; // until the next window
    _KXGL.getUniformLocation = nullptr;
    shader = makeShader();
    EXPECT_EQ(shader->isUsable(), 0);
    EXPECT_STREQ(KXError(), "Unable to make a shader: the driver has none");
    expectSameScenes(60);
}

TEST_F(DrawBatch, DriversThatDrawInSoftwareAreKnownByName) {
    const std::pair<const char*, _KXDriver> rows[] = {
        {"llvmpipe (LLVM 15.0.6, 256 bits)", _KXDriver::Software},
        {"softpipe", _KXDriver::Software},
        {"GDI Generic", _KXDriver::Software},
        {"Some Software Renderer", _KXDriver::Software},
        {"zink Vulkan 1.3 (llvmpipe)", _KXDriver::Software},
        {"Some Graphics 4000/PCIe/SSE2", _KXDriver::Hardware},
        {"", _KXDriver::Hardware},
        {nullptr, _KXDriver::Hardware},
    };
    for (const auto& [name, driver] : rows)
        EXPECT_EQ(_KXDriverNamed(name), driver) << (name ? name : "null");
}

TEST_F(DrawBatch, CallsOfKnownScenes) {
    const auto sprite = [this] { texture->draw(5, 5, -1); };
    const auto outline = [] { KXDrawRect(everything, white); };
    const auto line = [] { KXDrawLine(KXZeroPoint, everything.origin, white); };
    const auto triangle = [] { KXDrawTriangle(KXZeroPoint, {9, 0}, {0, 9}, white); };
    const auto fill = [] { paint(white); };
    const auto label = [this] { font.print(KXZeroPoint, white, "Score 10"); };
    label(); // glyphs are made once
    // Quads, lines, glyphs, textures bound, draw calls and flushes.
    using Counts = std::array<int, 6>;
    const auto counts = [](const KXDrawStatistics& s) {
        return Counts{s.quads, s.lines, s.glyphs, s.textureBinds, s.drawCalls, s.flushes};
    };
    const std::pair<std::vector<std::function<void()>>, Counts> rows[] = {
        {{sprite}, {10, 0, 0, 1, 1, 1}},
        {{sprite, [&] { other.draw(0, 0, -1); }}, {20, 0, 0, 20, 20, 1}},
        {{fill, sprite, outline}, {60, 0, 0, 1, 1, 1}},
        {{[&] { texture->drawNineSlice(KXZeroPoint, other.size(), 4); }}, {90, 0, 0, 1, 1, 1}},
        {{fill, outline, label}, {120, 0, 70, 1, 1, 1}},
        {{line, [] { KXDrawCircle(KXZeroPoint, 9, 6, white); }}, {0, 70, 0, 0, 1, 1}},
        {{line, triangle}, {0, 40, 0, 0, 20, 1}},
    };
    for (const auto& [draws, expected] : rows)
        for (const bool batched : {true, false}) {
            window->swapBuffers();
            batched ? KXBeginDrawBatch() : KXEndDrawBatch();
            for (int i = 0; i < 10; ++i)
                for (const auto& draw : draws)
                    draw();
            KXFlushDrawBatch();
            const Counts counted = counts(KXCurrentDrawStatistics());
            EXPECT_TRUE(std::equal(counted.begin(), counted.begin() + (batched ? 6 : 3), expected.begin()));
            window->swapBuffers();
            EXPECT_EQ(counts(KXLastDrawStatistics()), counted) << testing::PrintToString(expected);
        }
}

TEST_F(DrawBatch, CrowdsLoseNothing) {
    const auto crowd = [this] {
        fill({0, 0, 0, 1});
        for (int i = 0; i < width * height; ++i) {
            const int x = i % width, y = i / width;
            if (y < height / 2) // more than fit into a block, then more changes of texture
                paint({0.2f, 0.5f, 1, 0.5f}, rect(x, y, 1, 1));
            else
                (x % 2 ? other : *texture).draw(x, y, 0.1f, 1.0f, 0, 0, -1);
        }
        KXFlushDrawBatch();
        return Image::of(*window);
    };
    const Image expected = crowd();
    KXBeginDrawBatch();
    for (const auto& [driver, quadsInACall] :
         {std::pair{_KXDriver::Software, 250}, {_KXDriver::Hardware, 2000}})
        for (int time = 0; time < 4; ++time) { // more than fit into the driver's memory
            _KXSetCurrentDriver(driver);
            window->swapBuffers();
            EXPECT_EQ(differingPixels(expected, crowd()), 0);
            const KXDrawStatistics counted = KXCurrentDrawStatistics();
            EXPECT_GT(counted.flushesBecause[KXDrawFlushFull], 2);
            EXPECT_LT(counted.drawCalls - counted.textureBinds, counted.quads / 2 / quadsInACall + 3);
        }
    KXEndDrawBatch();
}

TEST_F(DrawBatch, LeavesByItselfWhenItMust) {
    const std::pair<KXDrawFlushReason, std::function<void()>> rows[] = {
        {KXDrawFlushRequest, [] { KXFlushDrawBatch(); }},
        {KXDrawFlushRequest, [this] { other.bind(); }},
        {KXDrawFlushRequest, [this] { other.drawingPosition(0, 0, 1, 1, 1, 0, 0); }},
        {KXDrawFlushTarget, [this] { target.setRenderContext(); }},
        {KXDrawFlushTarget, [this] { target.unsetRenderContext(); }},
        {KXDrawFlushTarget, [this] { window->setRenderContext(); }},
        {KXDrawFlushClip, [this] { window->setClipTo(everything); }},
        {KXDrawFlushProjection, [this] { window->setRenderingMode(KXWindowRenderingMode3D); }},
        {KXDrawFlushProjection, [this] { window->setRenderingMode(KXWindowRenderingMode2D); }},
        {KXDrawFlushTextureChange, [this] { loadNoise(*texture, 4, 4); }},
        {KXDrawFlushTextureChange, [this] { texture = std::make_unique<KXTexture>(4, 4); }},
        {KXDrawFlushRead, [this] { target.getPixel(KXZeroPoint, 0); }},
        {KXDrawFlushRead, [this] { delete window->copyTexture(); }},
        {KXDrawFlushText, [] { KXFont(testFont(), KXAliasModePolygon).print(KXZeroPoint, white, "x"); }},
        {KXDrawFlushClear, [] { KXClear(KXRedColor); }},
        {KXDrawFlushSwap, [this] { window->swapBuffers(); }},
        {KXDrawFlushFrame, [] { KXPostLogicLoop(); }},
        {KXDrawFlushEnd, [] { KXEndDrawBatch(); }},
    };
    KXBeginDrawBatch();
    for (const auto& [reason, act] : rows) {
        texture->draw(0, 0, -1);
        const KXDrawStatistics& counters =
            reason == KXDrawFlushSwap ? _KXLastDrawStatistics : _KXDrawStatistics;
        const int before = _KXDrawStatistics.flushesBecause[reason];
        act();
        EXPECT_GT(counters.flushesBecause[reason], before) << &act - &rows[0].second << " " << reason;
    }
}

TEST_F(DrawBatch, NestsAndStaysOpenAcrossFrames) {
    const auto callsOfADraw = [] {
        const int before = KXCurrentDrawStatistics().drawCalls;
        paint(white);
        return KXCurrentDrawStatistics().drawCalls - before;
    };
    window->swapBuffers();
    KXEndDrawBatch(); // none open
    EXPECT_EQ(callsOfADraw(), 1);
    KXBeginDrawBatch();
    KXBeginDrawBatch();
    EXPECT_EQ(callsOfADraw(), 0);
    KXEndDrawBatch();
    window->swapBuffers();
    EXPECT_EQ(KXLastDrawStatistics().drawCalls, 2);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    EXPECT_EQ(callsOfADraw(), 1) << "shapes would show the edges between their triangles";
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    EXPECT_EQ(callsOfADraw(), 0);
    KXEndDrawBatch();
    EXPECT_EQ(KXCurrentDrawStatistics().drawCalls, 2);

    KXBeginDrawBatch();
    EXPECT_EQ(callsOfADraw(), 0);
    window.reset(); // what was collected is gone with its window
    KXEndDrawBatch();
}
} // namespace
