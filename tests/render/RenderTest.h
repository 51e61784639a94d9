#pragma once

#include "core/ground/ErrorSlot.h"
#include "render/KXRenderContext.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXTexture.h>

#include <SDL_opengl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <new>
#include <random>
#include <utility>

inline constexpr Pixel black = {0, 0, 0, 255}, red = {255, 0, 0, 255}, blue = {0, 0, 255, 255},
                       transparent = {};
inline constexpr KXRect everything = {{-1000, -1000}, {3000, 3000}};

/// A rectangle in whole numbers.
constexpr KXRect rect(int x, int y, int width, int height) {
    return {{float(x), float(y)}, {float(width), float(height)}};
}

/// Left, top, right and bottom: the last two lie outside.
using Box = std::array<int, 4>;
inline constexpr Box nothing = {9999, 9999, 0, 0};

/// Width and height, to compare them.
using Sides = std::array<float, 2>;
constexpr Sides sides(KXSize size) { return {size.width, size.height}; }

struct RenderTest : WindowTest {
    using WindowTest::WindowTest;
    /// Another window, that is current.
    static std::unique_ptr<KXWindow> makeWindow(KXSize size = {64, 48}) {
        auto another = std::make_unique<KXWindow>("Another", size);
        another->setRenderContext();
        return another;
    }
    /// The box around what has another colour.
    static Box boxOf(const Image& image, Pixel ground = black) {
        Box box = nothing;
        for (int i = 0; i < image.width * image.height; ++i) {
            const int x = i % image.width, y = i / image.width;
            if (image.at(x, y) != ground)
                box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x + 1),
                       std::max(box[3], y + 1)};
        }
        return box;
    }
    static int count(const Image& image, Pixel color) {
        return static_cast<int>(std::ranges::count(image.pixels, color));
    }
    /// Expects all of a box in one colour, and nothing around it.
    static void expectBox(const Image& image, Box box, Pixel color = red, Pixel ground = black) {
        EXPECT_EQ(boxOf(image, ground), box);
        EXPECT_EQ(count(image, color), (box[2] - box[0]) * (box[3] - box[1]));
    }
    static void paint(KXColor color, KXRect where = everything) { KXDrawRectFill(where, color); }
    /// What is drawn on black into the current window, by default the test's.
    Image picture(const std::function<void()>& draw, KXWindow* target = nullptr) {
        fill({0, 0, 0, 1});
        draw();
        return Image::of(target ? *target : *window);
    }
    static std::array<GLint, 4> state(GLenum what) {
        std::array<GLint, 4> values = {};
        glGetIntegerv(what, values.data());
        return values;
    }

    /// The window, and a texture to draw into.
    std::array<KXRenderContext*, 2> targets(KXTexture& texture) { return {window.get(), &texture}; }
    static void load(KXTexture& texture, int width, int height, const Pixel* pixels) {
        texture._loadFromData(width, height, 4, GL_RGBA, reinterpret_cast<const char*>(pixels));
    }
    /// Fills a texture with noise, which shows every wrong texel.
    void loadNoise(KXTexture& texture, int width, int height) {
        std::vector<Pixel> pixels(static_cast<std::size_t>(width * height));
        const auto channel = [this] { return static_cast<std::uint8_t>(random() % 256); };
        for (Pixel& pixel : pixels)
            pixel = {channel(), channel(), channel(), static_cast<std::uint8_t>(random() % 4 ? 255 : 128)};
        load(texture, width, height, pixels.data());
    }
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    std::mt19937 random{20};
};
