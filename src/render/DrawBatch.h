#pragma once

#include "render/DrawStatistics.h"

/// Whether draws are collected now.
bool _KXIsCollecting();
/// Draws what was collected. Costs one comparison if that is nothing.
void _KXFlushBatch(KXDrawFlushReason reason);
/// Forgets what was collected for a window that closes.
void _KXDropBatch();
/// Ends every batch and frees its memory; what was collected is forgotten.
void _KXFreeBatch();
