#include "Pictures.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace {
constexpr Color night = 0x1b1b3aff, dusk = 0x693668ff, glow = 0xe8824fff, sun = 0xffd98aff;
constexpr Color farHill = 0x4a2e5cff, midHill = 0x33264dff, nearHill = 0x201b36ff;
constexpr Color ink = 0x1a1626ff, wood = 0xa8693fff, woodLight = 0xcf9157ff, woodDark = 0x6e4230ff;
constexpr Color paper = 0xf4e3c1ff;

double hill(double x, double base, double height, double length, double shift) {
    const double turn = 2 * std::numbers::pi * x / length + shift;
    return base -
           height * (0.6 * std::sin(turn) + 0.3 * std::sin(2.3 * turn + 1) + 0.1 * std::sin(5.1 * turn));
}

void drawSky(Canvas& canvas) {
    for (int y = 0; y < canvas.height(); ++y) {
        // In bands, as a painter with few colours would.
        const double height = std::floor(y / 10.0) * 10 / 190;
        const Color band = height < 0.6 ? mix(night, dusk, height / 0.6)
                                        : mix(dusk, glow, std::fmin(1, (height - 0.6) / 0.4));
        canvas.fillRect(0, y, canvas.width(), 1, band);
    }
    unsigned seed = 7;
    for (int star = 0; star < 120; ++star) {
        seed = seed * 1103515245u + 12345u;
        const int x = static_cast<int>(seed >> 16) % canvas.width();
        seed = seed * 1103515245u + 12345u;
        const int y = static_cast<int>(seed >> 16) % 100;
        canvas.at(x, y) = mix(canvas.at(x, y), 0xffffffff, 0.7 - y / 200.0);
    }
    for (int y = -26; y <= 26; ++y)
        for (int x = -26; x <= 26; ++x)
            if (x * x + y * y < 26 * 26)
                canvas.at(300 + x, 150 + y) = mix(sun, glow, (y + 26) / 70.0);
}

void drawTree(Canvas& canvas, int x, int y, int size, Color color) {
    for (int row = 0; row < size; ++row) {
        const int half = (row % 6 + row) / 4;
        canvas.fillRect(x - half, y - size - 2 + row, 2 * half + 1, 1, color);
    }
    canvas.fillRect(x, y - 2, 1, 4, color);
}
} // namespace

Canvas drawBackground() {
    Canvas canvas(400, 250);
    drawSky(canvas);
    const struct {
        double base, height, length, shift;
        Color color;
        int treeEvery, treeSize;
    } hills[] = {
        {165, 22, 260, 0.4, farHill, 0, 0},
        {190, 16, 190, 2.1, midHill, 23, 9},
        {218, 10, 310, 4.0, nearHill, 37, 16},
    };
    for (const auto& [base, height, length, shift, color, treeEvery, treeSize] : hills) {
        for (int x = 0; x < canvas.width(); ++x) {
            const int top = static_cast<int>(hill(x, base, height, length, shift));
            canvas.fillRect(x, top, 1, canvas.height() - top, color);
        }
        for (int x = 11; treeEvery && x < canvas.width(); x += treeEvery)
            drawTree(canvas, x, static_cast<int>(hill(x, base, height, length, shift)) + 2, treeSize + x % 5,
                     color);
    }
    return canvas;
}

Canvas drawPanel() {
    Canvas canvas(24, 24, 0x241c33e0);
    const Color rings[] = {ink, woodLight, wood, wood, woodDark, ink};
    for (int ring = 0; ring < 6; ++ring) {
        const int side = 24 - 2 * ring;
        canvas.fillRect(ring, ring, side, 1, rings[ring]);
        canvas.fillRect(ring, ring, 1, side, rings[ring]);
        canvas.fillRect(ring, 23 - ring, side, 1, ring == 1 ? woodDark : rings[ring]);
        canvas.fillRect(23 - ring, ring, 1, side, ring == 1 ? woodDark : rings[ring]);
    }
    for (const int x : {0, 23})
        for (const int y : {0, 23})
            canvas.at(x, y) = 0;
    for (const int x : {2, 19})
        for (const int y : {2, 19}) {
            canvas.fillRect(x, y, 3, 3, ink);
            canvas.at(x + 1, y + 1) = sun;
        }
    return canvas;
}

Canvas drawCrate() {
    Canvas canvas(32, 32, wood);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x) {
            const bool frame = x < 5 || y < 5 || x > 26 || y > 26;
            const bool brace = std::abs(x - y) < 4;
            Color color = frame || brace ? woodLight : wood;
            if (!frame && !brace && x % 6 == 5)
                color = woodDark;
            if (frame && (x == 4 || y == 4 || x == 27 || y == 27 || x == 0 || y == 0 || x == 31 || y == 31))
                color = woodDark;
            if (!frame && std::abs(x - y) == 4)
                color = woodDark;
            canvas.at(x, y) = color;
        }
    for (const int x : {2, 29})
        for (const int y : {2, 29})
            canvas.at(x, y) = ink;
    return canvas;
}

Canvas drawKeys() {
    const struct {
        const char *key, *meaning;
    } lines[] = {
        {"ARROWS", "WALK"}, {"SPACE", "HOP"},        {"WHEEL", "TURN"},        {"CLICK", "PLACE"},
        {"H", "HIT BOXES"}, {"M", "MIRROR PICTURE"}, {"DRAG", "RESIZE PANEL"}, {"F", "FULLSCREEN"},
        {"3", "3D"},        {"B", "SAVE BMP"},       {"P", "SAVE PNG"},        {"ESC", "LEAVE"},
    };
    Canvas canvas(88, 84);
    int y = 0;
    for (const auto& [key, meaning] : lines) {
        canvas.write(0, y, key, sun);
        canvas.write(28, y, meaning, paper);
        y += 7;
    }
    return canvas;
}
