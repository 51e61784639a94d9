#pragma once

#include "core/ground/LogicClock.h"

/// Owns the logic loop's clock while it lives: steps of 16 ms, starting shortly before the 32-bit time wraps.
struct LogicSteps {
    LogicSteps() {
        _KXLogicSpeed = 60;
        _KXLogicTimeRequiredPerLogicCycle = 16;
        _KXLogicCurrentTime = 0xFFFFFF00;
    }
    ~LogicSteps() {
        _KXLogicSpeed = 1;
        _KXLogicTimeRequiredPerLogicCycle = _KXLogicCurrentTime = 0;
    }
    LogicSteps(const LogicSteps&) = delete;
    LogicSteps& operator=(const LogicSteps&) = delete;

    static void advance(unsigned steps) { _KXLogicCurrentTime += steps * _KXLogicTimeRequiredPerLogicCycle; }
};
