#include "GridFinder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace {
/// Rows, or columns, of pixels in which something is drawn.
struct Stretch {
    int begin, end;
};
using Stretches = std::vector<Stretch>;

/// The grid in one direction.
struct Axis {
    int offset, size, gap;
};
} // namespace

static Stretches stretches(const std::vector<std::uint8_t>& isDrawn) {
    Stretches all;
    for (int i = 0; i < static_cast<int>(isDrawn.size()); ++i) {
        if (!isDrawn[i])
            continue;
        if (!all.empty() && all.back().end == i)
            all.back().end = i + 1;
        else
            all.push_back({i, i + 1});
    }
    return all;
}

static std::pair<Stretches, Stretches> drawnIn(const KXImage& sheet) {
    std::vector<std::uint8_t> columns(static_cast<std::size_t>(sheet.width())),
        rows(static_cast<std::size_t>(sheet.height()));
    for (int y = 0; y < sheet.height(); ++y) {
        const KXPixel* const pixels = sheet.row(y);
        std::uint8_t any = 0;
        for (int x = 0; x < sheet.width(); ++x) {
            const std::uint8_t isDrawn = pixels[x].a != 0;
            columns[x] |= isDrawn;
            any |= isDrawn;
        }
        rows[y] = any;
    }
    return {stretches(columns), stretches(rows)};
}

// Whether what is drawn fills cells from edge to edge, but for those that are empty.
static bool fills(const Stretches& drawn, const Axis& axis) {
    const int first = axis.offset, period = axis.size + axis.gap;
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        const int begin = (drawn[i].begin - first) % period, end = begin + drawn[i].end - drawn[i].begin;
        const int cell = (drawn[i].begin - first) / period;
        const bool isFirst = i == 0 || (drawn[i - 1].begin - first) / period != cell,
                   isLast = i + 1 == drawn.size() || (drawn[i + 1].begin - first) / period != cell;
        if (end > axis.size || (isFirst && begin != 0) || (isLast && end != axis.size))
            return false;
    }
    return true;
}

// The smallest cells that recur with the same gap between them.
static std::optional<Axis> recurring(const Stretches& drawn) {
    for (std::size_t i = 0; i + 1 < drawn.size(); ++i) {
        const int first = drawn[0].begin;
        const Axis axis = {first, drawn[i].end - first, drawn[i + 1].begin - drawn[i].end};
        if (fills(drawn, axis))
            return axis;
    }
    return std::nullopt;
}

static bool cutsNothing(const Stretches& drawn, int size) {
    return std::all_of(drawn.begin(), drawn.end(), [size](const Stretch& stretch) {
        return stretch.begin / size == (stretch.end - 1) / size;
    });
}

// The smallest cells, of no more than the length, that divide it.
static std::optional<Axis> divided(const Stretches& drawn, int length) {
    constexpr int least = 4;
    for (int size = least; size <= length / 2; ++size)
        if (length % size == 0 && cutsNothing(drawn, size))
            return Axis{0, size, 0};
    return std::nullopt;
}

// One cell, if it is clear that there is one.
static std::optional<Axis> single(const Stretches& drawn, int length) {
    return drawn.size() == 1 ? std::optional(Axis{0, length, 0}) : std::nullopt;
}

// A long sheet that squares divide has frames side by side.
static std::optional<Grid> sideBySide(int width, int height) {
    const int shorter = std::min(width, height), longer = std::max(width, height);
    return shorter >= 8 && longer >= 3 * shorter && longer % shorter == 0
               ? std::optional(Grid{0, 0, shorter, shorter, 0, 0})
               : std::nullopt;
}

// A full sheet: frames, or tiles.
static std::optional<Grid> usual(int width, int height) {
    if (const std::optional<Grid> frames = sideBySide(width, height))
        return frames;
    for (const int side : {16, 32, 24, 48, 64, 8})
        if (width % side == 0 && height % side == 0 && std::max(width, height) > side)
            return Grid{0, 0, side, side, 0, 0};
    return std::nullopt;
}

std::optional<Grid> findGrid(const KXImage& sheet) {
    const int width = sheet.width(), height = sheet.height();
    const auto [columns, rows] = drawnIn(sheet);
    if (columns.empty())
        return std::nullopt;
    std::optional<Axis> across = recurring(columns), down = recurring(rows);
    const bool hasGaps = across || down;
    // One row of cells that fill theirs is as high as they are, for the others are as well.
    if (hasGaps && !across && columns.size() == 1)
        across = Axis{columns[0].begin, columns[0].end - columns[0].begin, 0};
    if (hasGaps && !down && rows.size() == 1)
        down = Axis{rows[0].begin, rows[0].end - rows[0].begin, 0};
    if (!across)
        across = divided(columns, width);
    if (!down)
        down = divided(rows, height);
    if (!across && !down)
        return columns.size() == 1 && rows.size() == 1 ? usual(width, height) : sideBySide(width, height);
    if (!across)
        across = single(columns, width);
    if (!down)
        down = single(rows, height);
    if (!across || !down)
        return std::nullopt;
    return Grid{across->offset, down->offset, across->size, down->size, across->gap, down->gap};
}

std::pair<int, int> cellAt(const Grid& grid, float x, float y) {
    const auto along = [](float place, int first, int pitch) {
        return static_cast<int>(std::floor((place - static_cast<float>(first)) / static_cast<float>(pitch)));
    };
    return {along(x, grid.x, grid.width + grid.gapX), along(y, grid.y, grid.height + grid.gapY)};
}

Area cellOf(const Grid& grid, int column, int row) {
    return {static_cast<float>(grid.x + column * (grid.width + grid.gapX)),
            static_cast<float>(grid.y + row * (grid.height + grid.gapY)), grid.width, grid.height};
}

std::pair<int, int> cellCount(const Grid& grid, int width, int height) {
    const auto along = [](int length, int first, int size, int gap) {
        return std::max(0, (length - first + gap) / (size + gap));
    };
    return {along(width, grid.x, grid.width, grid.gapX), along(height, grid.y, grid.height, grid.gapY)};
}

bool isBlank(const KXImage& sheet, const Area& area) {
    const int left = std::max(0, static_cast<int>(area.x)), top = std::max(0, static_cast<int>(area.y)),
              right = std::min(sheet.width(), static_cast<int>(area.x) + area.width),
              bottom = std::min(sheet.height(), static_cast<int>(area.y) + area.height);
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            if (sheet.row(y)[x].a != 0)
                return false;
    return true;
}

std::vector<Area> filledCells(const KXImage& sheet, const Grid& grid, std::pair<int, int> first,
                              std::pair<int, int> last) {
    std::vector<Area> cells;
    for (int row = first.second; row <= last.second; ++row)
        for (int column = first.first; column <= last.first; ++column)
            if (const Area cell = cellOf(grid, column, row); first == last || !isBlank(sheet, cell))
                cells.push_back(cell);
    return cells;
}
