#include "platform/Sleep.h"

#include <windows.h>

#include <timeapi.h>

void _KXSleepBriefly() {
    // Without being asked the system wakes programs 64 times a second.
    static const MMRESULT finer = timeBeginPeriod(1);
    static_cast<void>(finer);
    Sleep(1);
}
