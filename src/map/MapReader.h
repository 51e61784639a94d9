#pragma once

#include "map/MapModel.h"
#include "util/Json.h"

// The parts of reading a map, one for each kind of thing in it.

/// The path of a file that another one names.
std::string _KXMapPathBeside(const std::string& file, const std::string& path);
KXMapProperties _KXReadMapProperties(const _KXJsonValue& owner);
/// "type", or "class" as one version of the editor had it.
std::string _KXReadMapType(const _KXJsonValue& owner);
/// A set, which may lie in a file of its own.
_KXTileset _KXReadTileset(const _KXJsonValue& value, const std::string& file);
/// The cells of a layer.
/// @param left how many cells there may be yet; less afterwards.
void _KXReadTiles(const _KXJsonValue& layer, bool isInfinite, std::int64_t& left, _KXTileGrid& grid);
/// The objects of a layer, appended to the map's, in their order.
void _KXReadObjects(const _KXJsonValue& value, int layer, _KXMapState& map);
