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
        canvas.set(x, y, mix(canvas.at(x, y), 0xffffffff, 0.7 - y / 200.0));
    }
    for (int y = -26; y <= 26; ++y)
        for (int x = -26; x <= 26; ++x)
            if (x * x + y * y < 26 * 26)
                canvas.set(300 + x, 150 + y, mix(sun, glow, (y + 26) / 70.0));
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
            canvas.set(x, y, 0);
    for (const int x : {2, 19})
        for (const int y : {2, 19}) {
            canvas.fillRect(x, y, 3, 3, ink);
            canvas.set(x + 1, y + 1, sun);
        }
    return canvas;
}

Canvas drawLogo() {
    constexpr std::string_view title = "EMBER NIGHT";
    Canvas canvas(4 * static_cast<int>(title.size()), 7);
    canvas.write(1, 1, title, ink);
    canvas.write(0, 0, title, sun);
    for (int x = 0; x < canvas.width(); ++x) // letters glow from below
        for (int y = 0; y < 5; ++y)
            if (canvas.at(x, y) == sun)
                canvas.set(x, y, mix(sun, glow, y / 5.0));
    return canvas;
}

Canvas drawGlow() {
    // In rings, like the sky in bands. White: whoever draws it gives it a colour.
    constexpr int side = 64, rings = 9;
    Canvas canvas(side, side, 0xffffff00);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double distance = std::hypot(x - 31.5, y - 31.5) / 32;
            const double light = std::fmax(0, 1 - std::ceil(distance * rings) / rings);
            canvas.set(x, y, 0xffffff00u | static_cast<Color>(std::lround(255 * light)));
        }
    return canvas;
}

Canvas drawMoon() {
    Canvas canvas(16, 16);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            if (std::hypot(x - 7.5, y - 7.5) < 7.5 && std::hypot(x - 11.5, y - 5.5) > 6.5)
                canvas.set(x, y, mix(paper, sun, y / 16.0));
    return canvas;
}

Canvas drawLogs() {
    Canvas canvas(16, 6);
    canvas.fillRect(0, 2, 16, 3, woodDark);
    canvas.fillRect(1, 2, 14, 1, wood);
    canvas.fillRect(3, 4, 10, 2, 0x4b3326ff);
    for (const int x : {0, 15})
        canvas.fillRect(x, 2, 1, 3, woodLight);
    return canvas;
}
