#include "Canvas.h"

#include <cmath>

static KXColor colorOf(Color color) {
    const auto channel = [color](int shift) { return static_cast<int>(color >> shift & 0xff); };
    return KXMakeColori(channel(24), channel(16), channel(8), channel(0));
}

Canvas::Canvas(int width, int height, Color background) : _image(width, height, colorOf(background)) {}

Color Canvas::at(int x, int y) const {
    const KXPixel pixel = KXPixelOf(_image.getPixel(x, y));
    return Color{pixel.r} << 24 | Color{pixel.g} << 16 | Color{pixel.b} << 8 | Color{pixel.a};
}

void Canvas::set(int x, int y, Color color) { _image.setPixel(x, y, colorOf(color)); }

void Canvas::fillRect(int x, int y, int width, int height, Color color) {
    const auto whole = [](int value) { return static_cast<float>(value); };
    _image.fill({{whole(x), whole(y)}, {whole(width), whole(height)}}, colorOf(color));
}

void Canvas::stamp(int x, int y, const std::vector<std::string_view>& rows, Color (*palette)(char)) {
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column)
            if (rows[row][column] != ' ')
                set(x + static_cast<int>(column), y + static_cast<int>(row), palette(rows[row][column]));
}

void Canvas::paste(int x, int y, const Canvas& from, bool mirrored) {
    _image.paste(mirrored ? from._image.flipped(KXFlipLeftRight) : from._image, x, y);
}

// Each letter is five rows of three pixels, one octal digit a row.
static int glyph(char letter) {
    static constexpr int letters[] = {
        075755, 065656, 034443, 065556, 074647, 074644, 034553, 055755, 072227,
        011152, 055655, 044447, 057755, 065555, 025552, 065644, 025563, 065655,
        034216, 072222, 055557, 055552, 055775, 055255, 055222, 071247,
    };
    static constexpr int digits[] = {075557, 026227, 061247, 061216, 055711,
                                     074616, 034657, 071222, 075757, 075316};
    if (letter >= 'A' && letter <= 'Z')
        return letters[letter - 'A'];
    return letter >= '0' && letter <= '9' ? digits[letter - '0'] : 0;
}

int Canvas::write(int x, int y, std::string_view text, Color color) {
    for (const char letter : text) {
        for (int row = 0; row < 5; ++row)
            for (int column = 0; column < 3; ++column)
                if (glyph(letter) >> (3 * (4 - row) + 2 - column) & 1)
                    set(x + column, y + row, color);
        x += 4;
    }
    return x;
}

bool Canvas::save(const std::string& path) const { return _image.writeToPNG(path.c_str()) != 0; }

Color mix(Color a, Color b, double share) {
    Color result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const double from = a >> shift & 0xff, to = b >> shift & 0xff;
        result |= static_cast<Color>(std::lround(from + (to - from) * share)) << shift;
    }
    return result;
}
