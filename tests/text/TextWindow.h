#pragma once

#include <Kobaltrix/KXTypes.h>

#include <SDL_video.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <vector>

/// The font that the tests draw with; fails the test where it is not installed.
const char* testFont();

/// A platform window with an OpenGL context of its own in the library's 2D mode, current from the start.
class TextWindow {
public:
    static constexpr int width = 320, height = 64;
    using Pixel = std::array<unsigned char, 4>;

    TextWindow();
    ~TextWindow();
    TextWindow(const TextWindow&) = delete;
    TextWindow& operator=(const TextWindow&) = delete;

    void makeCurrent();
    /// Clears the window to black, runs @a draw and returns the pixels, top row first.
    std::vector<Pixel> draw(const std::function<void()>& draw);

private:
    SDL_Window* _window;
    SDL_GLContext _context;
};

/// Where the pixels that are not black lie: left, top, right and bottom edge; all 0 if every pixel is black.
struct Ink {
    int left, top, right, bottom;
    bool operator==(const Ink&) const = default;
};
Ink inkOf(const std::vector<TextWindow::Pixel>& pixels);
/// The largest difference of any colour channel.
int largestDifference(const std::vector<TextWindow::Pixel>& a, const std::vector<TextWindow::Pixel>& b);

/// A test with a window, in which nothing may cause an OpenGL error or write to the error stream.
struct TextTest : testing::Test {
    TextTest();
    ~TextTest() override;
    TextWindow window;
};
