// What lies behind the levels: each picture goes on at its left edge where it ends at its right.

#include "Pictures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
constexpr int width = 512;

// The height of a ridge: waves that fit into the picture a whole number of times.
double ridge(int x, double low, double high, int waves, double shift) {
    const double turn = 2 * std::numbers::pi * x / width;
    const double wave = 0.55 * std::sin(turn * waves + shift) +
                        0.3 * std::sin(turn * (2 * waves + 1) + 2 * shift) +
                        0.15 * std::sin(turn * (5 * waves + 2) + 3 * shift);
    return low + (high - low) * (0.5 + 0.5 * wave);
}

// A zigzag of peaks, sharper than waves.
double peak(int x, int every, int shift, int tall) {
    const int at = (x + shift) % width % every;
    const int half = every / 2;
    return tall * (1 - std::abs(at - half) / static_cast<double>(half));
}

void drawFir(Canvas& canvas, int x, int y, int size, Color dark, Color light) {
    for (int row = 0; row < size; ++row) {
        const int half = (row % 5 + row) / 4;
        for (int i = -half; i <= half; ++i)
            canvas.set((x + i + width) % width, y - size + row, i < 0 ? light : dark);
    }
    canvas.set(x, y, 0x4b3326ff);
    canvas.set(x, y + 1, 0x4b3326ff);
}
} // namespace

Canvas drawSky() {
    Canvas canvas(400, 250);
    for (int y = 0; y < canvas.height(); ++y) {
        const double height = std::floor(y / 8.0) * 8 / 250;
        canvas.fillRect(0, y, canvas.width(), 1,
                        height < 0.55 ? mix(0x5fa8d8ff, 0xa6d8eaff, height / 0.55)
                                      : mix(0xa6d8eaff, 0xfdebc4ff, (height - 0.55) / 0.45));
    }
    for (int y = -60; y <= 60; ++y)
        for (int x = -60; x <= 60; ++x) {
            const double distance = std::hypot(x, y);
            const int ring = distance < 17 ? 0 : static_cast<int>(std::ceil((distance - 17) / 11));
            if (ring > 3)
                continue;
            const Color under = canvas.at(316 + x, 62 + y);
            canvas.set(316 + x, 62 + y, ring == 0 ? 0xfff6d8ff : mix(0xfff1c4ff, under, 0.45 + ring * 0.16));
        }
    // Clouds of a few discs each, flat below.
    const struct {
        int x, y, size;
    } clouds[] = {{60, 58, 14}, {170, 34, 10}, {236, 96, 12}, {372, 118, 13}, {118, 122, 9}};
    for (const auto& [x, y, size] : clouds)
        for (int disc = -2; disc <= 2; ++disc) {
            const double radius = size * (1 - 0.26 * std::abs(disc)) * 0.8;
            for (int dy = -size; dy <= 2; ++dy)
                for (int dx = -size; dx <= size; ++dx)
                    if (std::hypot(dx, dy * 1.25) < radius)
                        canvas.set((x + disc * size * 3 / 4 + dx + 400) % 400, y + dy,
                                   dy > -1   ? 0xd7ecf2ff
                                   : dy > -4 ? 0xeaf6f6ff
                                             : 0xffffffff);
        }
    return canvas;
}

Canvas drawPeaks() {
    Canvas canvas(width, 170);
    const struct {
        int every, shift, tall;
        Color rock, shade, snow;
    } chains[] = {{128, 40, 78, 0x9db9d3ff, 0x8aa8c6ff, 0xf2f7faff},
                  {170, 0, 100, 0x7f9fc2ff, 0x6a8ab0ff, 0xffffffff}};
    for (const auto& [every, shift, tall, rock, shade, snow] : chains)
        for (int x = 0; x < width; ++x) {
            if (every == 170 && x >= 510)
                continue;
            const double top = 165 - 40 - peak(x, every, shift, tall) - ridge(x, 0, 10, 6, 1);
            const int at = (x + shift) % width % every, first = static_cast<int>(top);
            const bool lit = at > every / 2 - 4 + (first % 7) - 3;
            canvas.fillRect(x, first, 1, canvas.height() - first, lit ? rock : shade);
            // Snow as far down as the ridge is high, in teeth.
            const int deep =
                static_cast<int>(72 - (first - 40) + 5 * std::sin(x * 0.9) + 4 * std::sin(x * 0.37)) / 2;
            if (deep > 0)
                canvas.fillRect(x, first, 1, deep, lit ? snow : mix(snow, rock, 0.35));
        }
    return canvas;
}

Canvas drawHills() {
    Canvas canvas(width, 130);
    const struct {
        double low, high;
        int waves;
        double shift;
        Color top, under;
    } rows[] = {{60, 12, 2, 0.6, 0x8fbf9eff, 0x7fb193ff}, {92, 52, 3, 2.4, 0x79b47cff, 0x66a26eff}};
    for (const auto& [low, high, waves, shift, top, under] : rows)
        for (int x = 0; x < width; ++x) {
            const int first = static_cast<int>(ridge(x, low, high, waves, shift));
            canvas.fillRect(x, first, 1, canvas.height() - first, under);
            canvas.fillRect(x, first, 1, 3, top);
            if ((x * 7 + waves * 13) % 31 < 2) // meadows with a tree here and there
                canvas.fillRect(x, first - 3, 1, 4, 0x4d8a63ff);
        }
    return canvas;
}

Canvas drawWoods() {
    Canvas canvas(width, 120);
    for (int x = 0; x < width; ++x) {
        const int first = static_cast<int>(ridge(x, 96, 62, 3, 4.1));
        canvas.fillRect(x, first, 1, canvas.height() - first, 0x3f7d5cff);
    }
    unsigned seed = 5;
    for (int x = 4; x < width; x += 9) {
        seed = seed * 1103515245u + 12345u;
        const int size = 14 + static_cast<int>(seed >> 16) % 16;
        const int y = static_cast<int>(ridge(x, 96, 62, 3, 4.1)) + 4;
        drawFir(canvas, x, y, size, 0x2f6a50ff, 0x44866aff);
    }
    return canvas;
}
