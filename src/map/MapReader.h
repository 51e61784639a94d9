#pragma once

#include "map/MapJson.h"
#include "map/MapModel.h"

// The parts of reading a map, one for each kind of thing in it.

/// The path of a file that another one names.
std::string _KXMapPathBeside(const std::string& file, const std::string& path);
KXMapProperties _KXReadMapProperties(const _KXMapValue& owner);
/// "type", or "class" as one version of the editor had it.
std::string _KXReadMapType(const _KXMapValue& owner);
/// A set, which may lie in a file of its own.
_KXTileset _KXReadTileset(const _KXMapValue& value, const std::string& file);
/// The cells of a layer.
/// @param left how many cells there may be yet; less afterwards.
void _KXReadTiles(const _KXMapValue& layer, bool isInfinite, std::int64_t& left, _KXTileGrid& grid);
/// The objects of a layer, appended to the map's, in their order.
void _KXReadObjects(const _KXMapValue& value, int layer, _KXMapState& map);
