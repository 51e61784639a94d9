#pragma once

#include <Kobaltrix/KXImage.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A colour as 0xRRGGBBAA.
using Color = std::uint32_t;

/// A picture in the making.
class Canvas {
public:
    Canvas(int width, int height, Color background = 0);

    int width() const { return _image.width(); }
    int height() const { return _image.height(); }
    /// The pixel at (x, y); none outside the picture.
    Color at(int x, int y) const;
    /// Sets a pixel, unless it lies outside.
    void set(int x, int y, Color color);
    void fillRect(int x, int y, int width, int height, Color color);
    /// Stamps rows of characters, each one looked up in a palette; spaces stay as they are.
    void stamp(int x, int y, const std::vector<std::string_view>& rows, Color (*palette)(char));
    /// Copies another picture, left and right swapped if it is to be mirrored.
    void paste(int x, int y, const Canvas& from, bool mirrored = false);
    /// Writes capital letters, digits and spaces of 3 by 5 pixels each. Returns the x behind the last one.
    int write(int x, int y, std::string_view text, Color color);
    /// Writes a PNG file; false if that fails.
    bool save(const std::string& path) const;

private:
    KXImage _image;
};

/// A mixture of two colours: a at 0, b at 1.
Color mix(Color a, Color b, double share);
