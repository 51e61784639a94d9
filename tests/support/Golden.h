#pragma once

#include "support/Image.h"

#include <gtest/gtest.h>

/// Expects an image to be the one that is kept in tests/golden/@a name.png, see KXTestGallery.
inline void expectGolden(const Image& actual, const std::string& name) {
    EXPECT_EQ(KXTestGallery(GOLDEN).compare(actual, name).message, "");
}
