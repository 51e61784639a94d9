#pragma once

#include "Project.h"

#include <Kobaltrix/KXImage.h>

#include <optional>
#include <utility>
#include <vector>

/// The grid that a sheet was drawn on, by the rows and columns of pixels in which nothing is drawn.
///
/// Where these gaps recur, cells are what lies between them. Else the sheet is divided evenly, into the
/// smallest cells whose edges cut nothing, and one that is full all over as sheets of tiles mostly are. None
/// where nothing fits.
std::optional<Grid> findGrid(const KXImage& sheet);

/// The cell that a place of the sheet is in, or in the gap behind: its column and row, which may be negative.
std::pair<int, int> cellAt(const Grid& grid, float x, float y);
/// A cell.
Area cellOf(const Grid& grid, int column, int row);
/// How many columns and rows of whole cells a sheet has.
std::pair<int, int> cellCount(const Grid& grid, int width, int height);
/// Whether nothing is drawn there.
bool isBlank(const KXImage& sheet, const Area& area);
/// The cells from one column and row to another that show something; a single one, whatever it shows.
std::vector<Area> filledCells(const KXImage& sheet, const Grid& grid, std::pair<int, int> first,
                              std::pair<int, int> last);
