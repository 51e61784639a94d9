// Programs of the game's own, what they find, and what happens where there are none.

#include <Kobaltrix/KXShader.h>

#include "RenderTest.h"
#include "render/GLFunctions.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFont.h>

namespace {
struct Shader : RenderTest {
    /// What a drawing comes out as, in the middle, at once and in a batch.
    Pixel drawn(const std::function<void()>& draw) {
        const Pixel atOnce = picture(draw).at(30, 20);
        KXBeginDrawBatch();
        EXPECT_EQ(picture([&] { draw(), KXEndDrawBatch(); }).at(30, 20), atOnce);
        return atOnce;
    }
};

TEST_F(Shader, FindsWhatIsDrawnAndItsValues) {
    KXShader shader("uniform float one; uniform vec2 two; uniform vec4 four; uniform mat4 many; uniform "
                    "sampler2D other;\n"
                    "void main() {\n"
                    "    vec4 mixed = many * vec4(one, two, 0.0) + four * texture2D(other, kxPlace);\n"
                    "    gl_FragColor = vec4(mixed.rgb, 1.0) * texture2D(kxTexture, kxPlace) * kxColor\n"
                    "                   * (kxTexel.x == 0.5 || kxTexel.x == 1.0 ? 1.0 : 0.0);\n"
                    "}");
    ASSERT_TRUE(shader.isUsable()) << KXError();
    KXTexture texture, other;
    const Pixel half[4] = {
        {255, 255, 255, 255}, {255, 255, 255, 255}, {255, 255, 255, 255}, {255, 255, 255, 255}};
    load(texture, 2, 2, half);
    const Pixel blueish = {0, 0, 255, 255};
    load(other, 1, 1, &blueish);
    const float swap[16] = {0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    EXPECT_EQ(shader.setFloat("one", 0.2f) + shader.setPoint("two", {0.4f, 0.2f}) +
                  shader.setColor("four", {9, 9, 0.4f, 1}) + shader.setMatrix("many", swap) +
                  shader.setTexture("other", &other),
              -5);
    const Pixel expected = {102, 51, 153, 255};
    const auto stretched = [&] { texture.draw({.scale = {32, 24}, .shader = &shader}); };
    const std::function<void()> pushed[] = {
        [] {
            paint({1, 1, 1, 1});
        },
        [] {
            KXDrawLine({0, 20}, {60, 20}, {1, 1, 1, 1});
        },
        [] { KXFont(testFont(), KXAliasModePolygon).setSize(9); },
        [&] { texture.draw(0, 0, 1.0f, 32.0f, 0, 0, -1); },
    };
    EXPECT_EQ(drawn(stretched), expected);
    _KXGL.activeTexture(GL_TEXTURE1);
    EXPECT_EQ(state(GL_TEXTURE_BINDING_2D)[0], 0) << "as it was";
    _KXGL.activeTexture(GL_TEXTURE0);
    for (const auto& draw : {pushed[0], pushed[1], pushed[3]})
        EXPECT_EQ(drawn([&] { KXPushShader(&shader), draw(), KXPopShader(); }), expected);
    EXPECT_EQ(drawn([&] {
                  KXPushShader(&shader), KXPushShader(nullptr), paint(white), KXPopShader(), KXPopShader(),
                      KXPopShader();
              }),
              (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(state(GL_CURRENT_PROGRAM)[0], 0);
    EXPECT_EQ(drawn([&] {
                  paint({1, 1, 1, 0.5f}), texture.draw({.scale = {32, 24},
                                                        .tint = {1, 1, 1, 0.5f},
                                                        .blend = KXBlendMultiply,
                                                        .shader = &shader});
              }).r,
              90)
        << "multiplied by its opacity";
    for (const int done :
         {shader.setFloat("none", 1), shader.setFloat(nullptr, 1), shader.setMatrix("many", nullptr)})
        EXPECT_EQ(done, 0);
    auto gone = std::make_unique<KXShader>("void main() { gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0); }");
    KXPushShader(gone.get());
    gone.reset();
    EXPECT_EQ(drawn([] { paint({0, 1, 0, 1}); }), (Pixel{0, 255, 0, 255}));
    KXPopShader();
}

TEST_F(Shader, ABatchKeepsTheValuesOfEachDraw) {
    KXShader shader("uniform vec4 shade; void main() { gl_FragColor = shade; }");
    const auto draw = [&] {
        for (int i = 0; i < 8; ++i) {
            if (i % 2 == 0)
                shader.setColor("shade", {0.1f * float(i), 0, 1, 1});
            KXPushShader(&shader);
            paint(white, rect(8 * i, 0, 8, 48));
            KXPopShader();
        }
    };
    const Image expected = picture(draw);
    KXBeginDrawBatch();
    const Image batched = picture([&] {
        window->swapBuffers();
        fill({0, 0, 0, 1});
        draw();
        KXEndDrawBatch();
    });
    EXPECT_EQ(differingPixels(expected, batched), 0);
    EXPECT_EQ(KXCurrentDrawStatistics().shaderChanges, 4);
    KXTexture unused;
}

TEST_F(Shader, MistakesAreToldByTheirLineAndDrawPlainly) {
    const std::pair<const char*, const char*> rows[] = {
        {"void main() {\n    gl_FragColor = vec4(1.0);\n    nonsense = 1.0;\n}", "line 3: "},
        {"nonsense;", "line 1: "},
        {"void other() {}", "kxMain"},
        {nullptr, "no source"},
    };
    for (const auto& [source, complaint] : rows) {
        _KXClearError();
        KXShader shader(source);
        EXPECT_EQ(shader.isUsable(), 0);
        EXPECT_NE(std::string(KXError()).find(complaint), std::string::npos) << KXError();
        EXPECT_EQ(shader.setFloat("one", 1), 0);
        EXPECT_EQ(drawn([&] {
                      KXPushShader(&shader), paint({0, 1, 0, 1}), KXPopShader();
                  }),
                  (Pixel{0, 255, 0, 255}));
    }
    KXShader here("void main() { gl_FragColor = vec4(1.0); }");
    const auto elsewhere = makeWindow();
    KXPushShader(&here);
    EXPECT_EQ(count(picture([] { paint({0, 1, 0, 1}); }, elsewhere.get()), {0, 255, 0, 255}), 64 * 48);
    KXPopShader();
}
} // namespace
