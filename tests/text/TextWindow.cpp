#include "text/TextWindow.h"

#include <SDL.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

const char* testFont() {
    static constexpr const char* path = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    if (!std::ifstream(path))
        ADD_FAILURE() << path << " is missing: install Debian's package fonts-dejavu-core";
    return path;
}

TextWindow::TextWindow() {
    // Once for all tests: a driver that is unloaded in between takes the names of its own leaks with it.
    static const bool loaded = SDL_Init(SDL_INIT_VIDEO) == 0 && SDL_GL_LoadLibrary(nullptr) == 0;
    EXPECT_TRUE(loaded) << SDL_GetError();
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 8);
    _window = SDL_CreateWindow("", 0, 0, width, height, SDL_WINDOW_OPENGL);
    _context = _window ? SDL_GL_CreateContext(_window) : nullptr;
    EXPECT_TRUE(_context) << "no OpenGL window: " << SDL_GetError();
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, width, height, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

TextWindow::~TextWindow() {
    SDL_GL_DeleteContext(_context);
    SDL_DestroyWindow(_window);
}

void TextWindow::makeCurrent() { SDL_GL_MakeCurrent(_window, _context); }

std::vector<TextWindow::Pixel> TextWindow::draw(const std::function<void()>& draw) {
    glClear(GL_COLOR_BUFFER_BIT);
    draw();
    std::vector<Pixel> pixels(width * height);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    for (int row = 0; row < height / 2; ++row)
        std::swap_ranges(pixels.begin() + row * width, pixels.begin() + (row + 1) * width,
                         pixels.begin() + (height - 1 - row) * width);
    return pixels;
}

Ink inkOf(const std::vector<TextWindow::Pixel>& pixels) {
    Ink ink = {TextWindow::width, TextWindow::height, 0, 0};
    for (int i = 0; i < static_cast<int>(pixels.size()); ++i) {
        const auto& pixel = pixels[static_cast<std::size_t>(i)];
        if (pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0)
            continue;
        const int x = i % TextWindow::width, y = i / TextWindow::width;
        ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
               std::max(ink.bottom, y + 1)};
    }
    return ink.right == 0 ? Ink{} : ink;
}

TextTest::TextTest() {
    while (glGetError() != GL_NO_ERROR) { // what making the window left
    }
    testing::internal::CaptureStderr();
}

TextTest::~TextTest() {
    window.makeCurrent();
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

int largestDifference(const std::vector<TextWindow::Pixel>& a, const std::vector<TextWindow::Pixel>& b) {
    int largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t channel = 0; channel < 3; ++channel)
            largest = std::max(largest, std::abs(a[i][channel] - b[i][channel]));
    return largest;
}
