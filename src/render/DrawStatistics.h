#pragma once

#include <Kobaltrix/KXDrawBatch.h>

inline constinit KXDrawStatistics _KXDrawStatistics = {};     ///< Since the last swap.
inline constinit KXDrawStatistics _KXLastDrawStatistics = {}; ///< Of the frame before.

/// Counts a frame as ended.
void _KXEndDrawStatistics();
