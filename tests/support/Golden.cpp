#include "support/Golden.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

/// White where two images differ, black elsewhere.
static Image difference(const Image& a, const Image& b, int tolerance) {
    Image result = a;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        const bool same = i < b.pixels.size() && isNear(a.pixels[i], b.pixels[i], tolerance);
        result.pixels[i] = same ? Pixel{0, 0, 0, 255} : Pixel{255, 255, 255, 255};
    }
    return result;
}

void expectGolden(const Image& actual, const std::string& name, int tolerance, int allowed) {
    const std::filesystem::path kept = std::filesystem::path(GOLDEN) / (name + ".png");
    if (std::getenv("KOBALTRIX_UPDATE_GOLDEN")) {
        std::filesystem::create_directories(kept.parent_path());
        actual.save(kept.string());
        return;
    }
    const Image expected = Image::fromFile(kept.string());
    const int differing = differingPixels(expected, actual, tolerance);
    EXPECT_LE(differing, allowed) << name;
    if (differing <= allowed)
        return;
    const std::string stem = kept.stem().string();
    expected.save(stem + ".expected.png");
    actual.save(stem + ".actual.png");
    difference(actual, expected, tolerance).save(stem + ".difference.png");
}
