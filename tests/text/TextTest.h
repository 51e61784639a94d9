#pragma once

#include "support/WindowTest.h"

#include <fstream>
#include <functional>

inline constexpr KXColor white = {1, 1, 1, 1};

/// The font that the tests draw with; fails the test where it is not installed.
inline const char* testFont() {
    static constexpr const char* path = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    if (!std::ifstream(path))
        ADD_FAILURE() << path << " is missing: install Debian's package fonts-dejavu-core";
    return path;
}

/// A test with a window as wide as a line of text, in which nothing may write to the error stream: that is
/// where FTGL says what it was asked wrongly.
struct TextTest : WindowTest {
    explicit TextTest(KXSize size = {320, 64}) : WindowTest(size) { testing::internal::CaptureStderr(); }
    ~TextTest() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

    /// Another window, that is current.
    std::unique_ptr<KXWindow> makeWindow() const {
        auto another = std::make_unique<KXWindow>("Text", window->size());
        another->setRenderContext();
        return another;
    }
    /// What is drawn on black into the current window, by default the test's.
    Image draw(const std::function<void()>& draw, KXWindow* target = nullptr) {
        fill({0, 0, 0, 1});
        draw();
        return Image::of(target ? *target : *window);
    }
    /// Number of pixels that are drawn.
    int drawnPixels(const std::function<void()>& draw) {
        return differingPixels(this->draw(draw), this->draw([] {}));
    }
};
