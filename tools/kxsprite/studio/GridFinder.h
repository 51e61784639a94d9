#pragma once

#include "Project.h"

#include <Kobaltrix/KXImage.h>

#include <optional>

/// The grid that a sheet was drawn on, by the rows and columns of pixels in which nothing is drawn.
///
/// Where these gaps recur, cells are what lies between them. Else the sheet is divided evenly, into the
/// smallest cells whose edges cut nothing, and one that is full all over as sheets of tiles mostly are. None
/// where nothing fits.
std::optional<Grid> findGrid(const KXImage& sheet);
