#pragma once

#include "render/RenderTest.h"

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
struct TextTest : RenderTest {
    explicit TextTest(KXSize size = {320, 64}) : RenderTest(size) { testing::internal::CaptureStderr(); }
    ~TextTest() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }
};
