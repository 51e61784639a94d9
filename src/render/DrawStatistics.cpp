#include "render/DrawStatistics.h"

#include <utility>

KXDrawStatistics KXCurrentDrawStatistics() { return _KXDrawStatistics; }

KXDrawStatistics KXLastDrawStatistics() { return _KXLastDrawStatistics; }

void _KXEndDrawStatistics() { _KXLastDrawStatistics = std::exchange(_KXDrawStatistics, {}); }
