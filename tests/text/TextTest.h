#pragma once

#include "support/WindowTest.h"

#include <functional>

/// The font that the tests draw with; fails the test where it is not installed.
const char* testFont();

/// Where the pixels that are not black lie: left, top, right and bottom edge; all 0 if every pixel is black.
struct Ink {
    int left, top, right, bottom;
    bool operator==(const Ink&) const = default;
};

/// A test with a window as wide as a line of text, in which nothing may write to the error stream: that is
/// where FTGL says what it was asked wrongly.
struct TextTest : WindowTest {
    TextTest();
    ~TextTest() override;

    static std::unique_ptr<KXWindow> makeWindow();
    /// Fills the current window, by default the test's, with black, runs @a draw and returns the pixels.
    Image draw(const std::function<void()>& draw, KXWindow* target = nullptr);
    /// What that draws.
    Ink ink(const std::function<void()>& draw);
};
