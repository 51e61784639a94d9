// Islands and grids that are found on drawn sheets.

#include "studio/GridFinder.h"
#include "studio/IslandFinder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {
/// A picture of rows of characters: a blank is transparent.
KXImage drawn(const std::vector<std::string>& rows) {
    KXImage picture(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()));
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (rows[y][x] != ' ')
                picture.setPixel(x, y, {1, 0, 0, 0.01f}); // nearly transparent counts
    return picture;
}

std::string told(const std::vector<Area>& areas) {
    std::string text;
    for (const Area& area : areas)
        text += std::to_string(int(area.x)) + "," + std::to_string(int(area.y)) + " " +
                std::to_string(area.width) + "x" + std::to_string(area.height) + "; ";
    return text;
}

std::string told(const std::optional<Grid>& grid) {
    if (!grid)
        return "none";
    const auto& [x, y, width, height, gapX, gapY] = *grid;
    return told(std::vector<Area>{{float(x), float(y), width, height}}) + std::to_string(gapX) + " " +
           std::to_string(gapY);
}

/// Boxes of other sizes than the cells that they stand in, at these places.
KXImage loose(int width, int height, const std::vector<KXRect>& boxes) {
    KXImage sheet(width, height);
    for (const KXRect& box : boxes)
        sheet.drawRectFill(box, {1, 1, 1, 1});
    return sheet;
}
} // namespace

TEST(IslandFinder, FindsWhatTouchesAndReadsItInRows) {
    const struct {
        std::vector<std::string> rows;
        int gap;
        std::string found;
    } cases[] = {
        {{"   ", "   "}, 0, ""},
        {{"#"}, 0, "0,0 1x1; "},
        {{"#  ", " # ", "  #"}, 0, "0,0 3x3; "},                                  // by corners
        {{"# # ", "# # ", "####"}, 0, "0,0 4x3; "},                               // joined only below
        {{"#####", "#   #", "# # #", "#   #", "#####"}, 0, "0,0 5x5; 2,2 1x1; "}, // one within another
        {{"   ##", "## ##", "##   ", "     ", "#   #"}, 0, "0,1 2x2; 3,0 2x2; 0,4 1x1; 4,4 1x1; "},
        {{"#   #", "     ", "  #  "}, 1, "0,0 5x3; "}, // the lower one is near to both
        {{"#  #", "    ", "    ", "#  #"}, 1, "0,0 1x1; 3,0 1x1; 0,3 1x1; 3,3 1x1; "},
        {{"#  #", "    ", "    ", "#  #"}, 2, "0,0 4x4; "},
    };
    for (const auto& [rows, gap, found] : cases)
        EXPECT_EQ(told(findIslands(drawn(rows), gap)), found) << rows[0] << " with " << gap;
    EXPECT_EQ(told(findIslands(KXImage())), "");

    const std::vector<Area> ring = findIslands(drawn({"#####", "#   #", "# # #", "#   #", "#####"}));
    EXPECT_EQ(std::tuple(islandAt(ring, 2, 2), islandAt(ring, 1, 1), islandAt(ring, 5, 0)),
              std::tuple(1, 0, -1));
}

// Squares that are joined are one island though each row of them is many pieces, and dust is too much.
TEST(IslandFinder, BearsLargePictures) {
    constexpr int side = 2048;
    KXImage squares(side, side);
    for (int i = 0; i < side / 2; i += 2) { // squares within each other, each joined to the next
        squares.drawRect({{float(i), float(i)}, {float(side - 2 * i), float(side - 2 * i)}}, {1, 1, 1, 1});
        squares.setPixel(i + 1, side / 2 - i % 3, {1, 1, 1, 1});
    }
    EXPECT_EQ(told(findIslands(squares)), "0,0 2048x2048; ");

    KXImage comb(side, side); // of a million teeth, which begin apart
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; x += y % 4 == 0 ? 2 : y % 4 == 1 ? 1 : side - 1)
            comb.row(y)[x].a = 255;
    EXPECT_EQ(told(findIslands(comb)), "0,0 2048x2048; ");

    KXImage dust(side, side);
    for (int y = 0; y < side; y += 2)
        for (int x = 0; x < side; x += 2)
            dust.row(y)[x].a = 255;
    EXPECT_EQ(findIslands(dust).size(), 0u);
    dust.fill({{0, 0}, {side, side - 64}}, {0, 0, 0, 0});
    EXPECT_EQ(findIslands(dust).size(), std::size_t{32} * side / 2);
}

TEST(GridFinder, FindsTheGridThatWasDrawnOn) {
    std::mt19937 random(7);
    const auto upTo = [&random](int most) { return int(random() % unsigned(most + 1)); };
    for (int round = 0; round < 300; ++round) {
        const Grid grid = {upTo(5), upTo(5), 1 + upTo(20), 1 + upTo(20), 1 + upTo(4), 1 + upTo(4)};
        const int columns = 2 + upTo(5), rows = 2 + upTo(5);
        KXImage sheet(grid.x + columns * (grid.width + grid.gapX) + upTo(9),
                      grid.y + rows * (grid.height + grid.gapY) + upTo(9));
        for (int cell = 0; cell < columns * rows; ++cell) {
            const int left = grid.x + cell % columns * (grid.width + grid.gapX),
                      top = grid.y + cell / columns * (grid.height + grid.gapY);
            if (cell % columns && cell / columns && upTo(3) == 0)
                continue; // an empty one
            for (int dots = upTo(40); dots > 0; --dots)
                sheet.setPixel(left + upTo(grid.width - 1), top + upTo(grid.height - 1), {1, 0, 1, 1});
            for (int x = 0, y = upTo(grid.height - 1); x < grid.width; ++x)
                sheet.setPixel(left + x, top + y, {1, 1, 0, 1});
            for (int y = 0, x = upTo(grid.width - 1); y < grid.height; ++y)
                sheet.setPixel(left + x, top + y, {0, 1, 1, 1});
        }
        EXPECT_EQ(told(findGrid(sheet)), told(grid)) << "round " << round;
    }
}

TEST(GridFinder, GuessesWhereGapsTellNothing) {
    const struct {
        KXImage sheet;
        std::string found;
    } cases[] = {
        {KXImage(64, 64), "none"},                       // nothing is drawn
        {KXImage(64, 64, KXRedColor), "0,0 16x16; 0 0"}, // tiles
        {KXImage(96, 24, KXRedColor), "0,0 24x24; 0 0"}, // frames side by side
        {KXImage(17, 19, KXRedColor), "none"},
        {loose(64, 32, {{{3, 2}, {9, 12}}, {{17, 1}, {15, 30}}, {{50, 4}, {5, 5}}}), "0,0 16x32; 0 0"},
        {loose(64, 32, {{{3, 2}, {9, 12}}, {{17, 1}, {15, 14}}, {{50, 20}, {5, 5}}}), "0,0 16x16; 0 0"},
        {loose(60, 30, {{{2, 0}, {10, 20}}, {{15, 0}, {10, 20}}, {{28, 0}, {10, 20}}}), "2,0 10x20; 3 0"},
        {loose(64, 64, {{{1, 1}, {40, 20}}, {{43, 1}, {20, 9}}, {{1, 22}, {35, 41}}}), "none"}, // packed
        {loose(96, 24, {{{1, 1}, {28, 23}}, {{29, 0}, {50, 24}}}),
         "0,0 24x24; 0 0"}, // some touch their neighbours
    };
    for (const auto& [sheet, found] : cases)
        EXPECT_EQ(told(findGrid(sheet)), found) << sheet.width() << " x " << sheet.height();
}
