#pragma once

#include "render/QuadStream.h"

#include <Kobaltrix/KXDrawOptions.h>

/// The part that a source names of a picture of some size, cut at its edges unless it goes on beyond them.
/// False where nothing is left.
bool _KXCutSource(const KXRect& source, KXSize picture, KXRect& part, bool goesOn = false);

/// The placement of a part by its options: a map of its pixels, from its top left. False where nothing is
/// drawn.
bool _KXPlacePart(const KXDrawOptions& options, KXSize part, _KXAffine& placement);

/// Where a rectangle of the part's pixels comes to lie.
KXPlacedBox _KXPlacedBoxOf(const _KXAffine& placement, const KXRect& box);
