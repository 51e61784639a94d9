#include "Canvas.h"

#include <SDL_image.h>

#include <cmath>

Canvas::Canvas(int width, int height, Color background)
    : _width(width), _height(height),
      _pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), background) {}

std::size_t Canvas::index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(_width) + static_cast<std::size_t>(x);
}

Color& Canvas::at(int x, int y) {
    if (x < 0 || y < 0 || x >= _width || y >= _height)
        return _outside;
    return _pixels[index(x, y)];
}

void Canvas::fillRect(int x, int y, int width, int height, Color color) {
    for (int row = y; row < y + height; ++row)
        for (int column = x; column < x + width; ++column)
            at(column, row) = color;
}

void Canvas::stamp(int x, int y, const std::vector<std::string_view>& rows, Color (*palette)(char)) {
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column)
            if (rows[row][column] != ' ')
                at(x + static_cast<int>(column), y + static_cast<int>(row)) = palette(rows[row][column]);
}

void Canvas::paste(int x, int y, const Canvas& from, bool mirrored) {
    for (int row = 0; row < from._height; ++row)
        for (int column = 0; column < from._width; ++column)
            at(x + (mirrored ? from._width - 1 - column : column), y + row) =
                from._pixels[from.index(column, row)];
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
                    at(x + column, y + row) = color;
        x += 4;
    }
    return x;
}

bool Canvas::save(const std::string& path) const {
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, _width, _height, 32, SDL_PIXELFORMAT_RGBA8888);
    if (!surface)
        return false;
    for (int y = 0; y < _height; ++y)
        for (int x = 0; x < _width; ++x)
            reinterpret_cast<Color*>(static_cast<char*>(surface->pixels) + y * surface->pitch)[x] =
                _pixels[index(x, y)];
    const bool saved = IMG_SavePNG(surface, path.c_str()) == 0;
    SDL_FreeSurface(surface);
    return saved;
}

Color mix(Color a, Color b, double share) {
    Color result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const double from = a >> shift & 0xff, to = b >> shift & 0xff;
        result |= static_cast<Color>(std::lround(from + (to - from) * share)) << shift;
    }
    return result;
}
