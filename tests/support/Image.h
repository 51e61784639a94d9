#pragma once

#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

/// One pixel, 0 to 255 a channel.
struct Pixel {
    std::uint8_t r, g, b, a;

    bool operator==(const Pixel&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Pixel& pixel);

/// An image read back from OpenGL or from a file; the first row is the top.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    /// The pixel at (x, y); throws outside the image.
    const Pixel& at(int x, int y) const;

    /// What was drawn into a window since its last swap, in pixels.
    static Image of(KXWindow& window);
    /// A texture's pixels.
    static Image of(KXTexture& texture);
    /// An image file. Empty if it cannot be read.
    static Image fromFile(const std::string& path);
    /// Writes a PNG file.
    void save(const std::string& path) const;
};

/// Whether no channel differs by more than `tolerance`.
bool isNear(Pixel p, Pixel q, int tolerance);
/// Number of pixels in which a channel differs by more than `tolerance`; every pixel when the sizes differ.
int differingPixels(const Image& a, const Image& b, int tolerance = 0);
