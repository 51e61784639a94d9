#pragma once

/// Lets other programs have the processor for a moment, the shortest that the system knows.
void _KXSleepBriefly();
