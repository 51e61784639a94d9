#include "platform/ThreadSignals.h"

// There are none that a thread could get.
_KXNoSignals::_KXNoSignals() = default;
_KXNoSignals::~_KXNoSignals() = default;
