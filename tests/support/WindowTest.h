#pragma once

#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXWindow.h>

#include "support/Image.h"

#include <gtest/gtest.h>

#include <memory>

/// A started library and one window, of 64 x 48 points unless a test wants another size, that is the target
/// of drawing, filled with black.
struct WindowTest : testing::Test {
    explicit WindowTest(KXSize size = {64, 48});
    ~WindowTest() override;

    /// Fills the current target.
    static void fill(KXColor color);

    std::unique_ptr<KXWindow> window;
};
