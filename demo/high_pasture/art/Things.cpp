// The tiles, and what stands still on them.

#include "Pictures.h"

#include <cmath>
#include <cstdlib>

namespace {
constexpr Color ink = 0x2a2238ff, grass = 0x6cbf4fff, grassLight = 0x9be06aff, grassDark = 0x3f8f45ff;
constexpr Color soil = 0x9a6a45ff, soilLight = 0xb5835aff, soilDark = 0x7a4f36ff;
constexpr Color stone = 0x8d93a8ff, stoneLight = 0xaeb5c6ff, stoneDark = 0x666b84ff;
constexpr Color wood = 0xb97f4aff, woodLight = 0xd9a566ff, woodDark = 0x7f5233ff;
constexpr int tile = 16;

unsigned noise(int x, int y) {
    unsigned value = static_cast<unsigned>(x) * 374761393u + static_cast<unsigned>(y) * 668265263u;
    value = (value ^ value >> 13) * 1274126177u;
    return value >> 8;
}

void drawSoil(Canvas& canvas, int left, int top) {
    canvas.fillRect(left, top, tile, tile, soil);
    for (int y = 0; y < tile; ++y)
        for (int x = 0; x < tile; ++x)
            if (const unsigned value = noise(x, y + 40) % 23; value < 2)
                canvas.fillRect(left + std::min(x, 14), top + y, 2, 1, value ? soilDark : soilLight);
}

// Grass hangs over the soil in teeth.
void drawGrass(Canvas& canvas, int left, int top) {
    drawSoil(canvas, left, top);
    for (int x = 0; x < tile; ++x) {
        const int deep = 5 + static_cast<int>(noise(x / 2, 3) % 3);
        canvas.fillRect(left + x, top, 1, deep, grass);
        canvas.set(left + x, top + deep, grassDark);
        canvas.fillRect(left + x, top, 1, 2, grassLight);
        if (noise(x, 9) % 3 == 0)
            canvas.set(left + x, top + 2, grassLight);
    }
}

void drawEdge(Canvas& canvas, int left, int top, bool atLeft) {
    drawGrass(canvas, left, top);
    const int x = atLeft ? left : left + tile - 1, inner = atLeft ? left + 1 : left + tile - 2;
    canvas.fillRect(x, top, 1, tile, soilDark);
    canvas.fillRect(x, top, 1, 9, grassDark);
    canvas.fillRect(inner, top + 1, 1, 9, grass);
    canvas.set(x, top, 0);
}

void drawStone(Canvas& canvas, int left, int top) {
    canvas.fillRect(left, top, tile, tile, stone);
    for (int row = 0; row < 2; ++row) {
        const int y = top + 8 * row;
        canvas.fillRect(left, y, tile, 1, stoneLight);
        canvas.fillRect(left, y + 7, tile, 1, stoneDark);
        const int joint = left + (row ? 4 : 11);
        canvas.fillRect(joint, y, 1, 8, stoneDark);
        canvas.fillRect(joint + 1, y, 1, 7, stoneLight);
        canvas.fillRect(left + (row ? 9 : 3), y + 3, 2, 1, stoneDark);
    }
}

void drawPlank(Canvas& canvas, int left, int top) {
    canvas.fillRect(left, top, tile, 6, wood);
    canvas.fillRect(left, top, tile, 1, woodLight);
    canvas.fillRect(left, top + 5, tile, 1, woodDark);
    canvas.fillRect(left + 3, top + 3, 6, 1, woodDark);
    canvas.fillRect(left, top, 1, 6, woodDark);
    canvas.set(left + 13, top + 2, woodDark);
    canvas.fillRect(left + 7, top + 6, 2, 3, woodDark);
}

void drawThistle(Canvas& canvas, int left, int top) {
    const struct { int x, tall; } stems[] = {{2, 7}, {7, 10}, {12, 8}};
    for (const auto& [x, tall] : stems) {
        const int head = top + tile - tall;
        canvas.fillRect(left + x, head, 1, tall, 0x4f8a3fff);
        for (int y = head + 3; y < top + tile; y += 2) {
            canvas.set(left + x - 1, y, 0x6fae55ff);
            canvas.set(left + x + 1, y + 1, 0x3a6b35ff);
            if (x + 2 < tile)
                canvas.set(left + x + 2, y, 0x6fae55ff);
        }
        canvas.fillRect(left + x - 1, head - 2, 3, 3, 0xb04f9bff);
        canvas.fillRect(left + x - 1, head - 3, 3, 1, 0xe38fc8ff);
        canvas.set(left + x, head - 4, 0xe38fc8ff);
        canvas.set(left + x, head, 0x7c3673ff);
    }
}

// What the level editor shows of the things that the game draws as sprites.
void drawMark(Canvas& canvas, int left, int top, std::string_view letters, Color color) {
    canvas.fillRect(left + 1, top + 1, 14, 14, mix(color, 0xffffff00, 0.55));
    canvas.fillRect(left + 1, top + 1, 14, 1, color);
    canvas.fillRect(left + 1, top + 14, 14, 1, color);
    canvas.fillRect(left + 1, top + 1, 1, 14, color);
    canvas.fillRect(left + 14, top + 1, 1, 14, color);
    canvas.write(left + 8 - static_cast<int>(letters.size()) * 2, top + 5, letters, ink);
}
} // namespace

Canvas drawTiles() {
    Canvas canvas(8 * tile, 2 * tile);
    drawGrass(canvas, 0, 0);
    drawSoil(canvas, tile, 0);
    drawEdge(canvas, 2 * tile, 0, true);
    drawEdge(canvas, 3 * tile, 0, false);
    drawStone(canvas, 4 * tile, 0);
    drawPlank(canvas, 5 * tile, 0);
    drawThistle(canvas, 6 * tile, 0);
    canvas.fillRect(7 * tile, 7, tile, 2, 0x7f5233ff);
    const struct {
        const char* letters;
        Color color;
    } marks[] = {{"FLO", 0x5a7be0ff}, {"BEE", 0xc9553dff}, {"CRO", 0x5a4a7aff}, {"BEL", 0xe0b040ff},
                 {"SGN", 0xb97f4aff}, {"KID", 0xd8d8e8ff}, {"HUT", 0x8a4f3aff}, {"", 0}};
    for (int i = 0; i < 7; ++i)
        drawMark(canvas, i * tile, tile, marks[i].letters, marks[i].color);
    drawSoil(canvas, 7 * tile, tile);
    canvas.fillRect(7 * tile + 4, tile + 5, 7, 5, stone);
    canvas.fillRect(7 * tile + 4, tile + 5, 7, 1, stoneLight);
    canvas.fillRect(7 * tile + 4, tile + 9, 7, 1, stoneDark);
    return canvas;
}

Canvas drawTufts() {
    // Four cells of what grows on grass: blades, daisies, buttercups, a stone.
    Canvas canvas(4 * tile, 8);
    for (int i = 0; i < 3; ++i)
        for (int x = 2; x < 14; x += 3) {
            const int tall = 2 + static_cast<int>(noise(x, i) % 4), left = i * tile + x;
            canvas.fillRect(left, 8 - tall, 1, tall, noise(x, i + 5) % 2 ? grassDark : grassLight);
            if (i > 0 && x % 2 == 0) {
                const Color petal = i == 1 ? 0xffffffff : 0xffd94aff;
                canvas.fillRect(left - 1, 8 - tall - 1, 3, 1, petal);
                canvas.set(left, 8 - tall - 2 < 0 ? 0 : 8 - tall - 2, petal);
                canvas.set(left, 8 - tall - 1, i == 1 ? 0xffc23aff : 0xe08a2aff);
            }
        }
    canvas.fillRect(3 * tile + 4, 4, 8, 4, stone);
    canvas.fillRect(3 * tile + 5, 3, 6, 1, stoneLight);
    canvas.fillRect(3 * tile + 4, 7, 8, 1, stoneDark);
    canvas.fillRect(3 * tile + 5, 4, 3, 1, stoneLight);
    return canvas;
}

Canvas drawHut() {
    Canvas canvas(64, 52);
    canvas.fillRect(10, 24, 44, 28, 0x9a6238ff);
    for (int y = 27; y < 52; y += 5)
        canvas.fillRect(10, y, 44, 1, 0x6e4230ff);
    canvas.fillRect(10, 24, 1, 28, 0x6e4230ff);
    canvas.fillRect(53, 24, 1, 28, 0x6e4230ff);
    for (int row = 0; row < 22; ++row) { // the roof, of shingles
        const int half = 10 + row;
        canvas.fillRect(32 - half, 4 + row, 2 * half, 1, row % 4 == 3 ? 0x7c3b34ff : 0xb4564aff);
        for (int x = 32 - half + row % 8; x < 32 + half; x += 8)
            canvas.set(x, 4 + row, 0x7c3b34ff);
    }
    canvas.fillRect(22, 3, 20, 2, 0xd98a72ff);
    canvas.fillRect(42, 0, 6, 10, stoneDark);
    canvas.fillRect(42, 0, 6, 2, stoneLight);
    canvas.fillRect(25, 32, 14, 20, 0x4b2f26ff); // the door, open, with light inside
    canvas.fillRect(27, 34, 10, 18, 0xffd98aff);
    canvas.fillRect(27, 34, 10, 5, 0xfff0b8ff);
    for (const int x : {14, 43}) {
        canvas.fillRect(x, 34, 7, 8, 0x4b2f26ff);
        canvas.fillRect(x + 1, 35, 5, 6, 0xffe3a0ff);
        canvas.fillRect(x + 3, 35, 1, 6, 0x4b2f26ff);
        for (int i = 0; i < 7; i += 2)
            canvas.set(x + i, 42, 0xe86878ff);
        canvas.fillRect(x, 43, 7, 1, grassDark);
    }
    return canvas;
}

Canvas drawSign() {
    Canvas canvas(16, 16);
    canvas.fillRect(7, 8, 2, 8, woodDark);
    canvas.fillRect(1, 1, 14, 8, woodDark);
    canvas.fillRect(2, 2, 12, 6, wood);
    canvas.fillRect(2, 2, 12, 1, woodLight);
    canvas.fillRect(4, 4, 8, 1, woodDark);
    canvas.fillRect(4, 6, 5, 1, woodDark);
    return canvas;
}

Canvas drawBasket() {
    Canvas canvas(32, 16);
    canvas.fillRect(0, 0, 32, 2, woodLight);
    canvas.fillRect(0, 2, 32, 1, woodDark);
    for (int y = 3; y < 12; ++y) {
        const int inset = (y - 3) / 3;
        for (int x = 1 + inset; x < 31 - inset; ++x)
            canvas.set(x, y, (x / 3 + y / 2) % 2 ? wood : woodLight);
        canvas.set(inset + 1, y, woodDark);
        canvas.set(30 - inset, y, woodDark);
    }
    canvas.fillRect(4, 12, 24, 1, woodDark);
    return canvas;
}

Canvas drawLogo() {
    constexpr std::string_view title = "HIGH PASTURE";
    Canvas canvas(4 * static_cast<int>(title.size()) + 1, 8);
    canvas.write(1, 1, title, ink);
    canvas.write(0, 0, title, 0xffffffff);
    for (int x = 0; x < canvas.width(); ++x) // snow above, grass below
        for (int y = 2; y < 5; ++y)
            if (canvas.at(x, y) == 0xffffffff)
                canvas.set(x, y, mix(0xdff3c8ff, grass, (y - 2) / 2.0));
    return canvas;
}
