#pragma once

// Whether the current OpenGL context's buffer swaps wait for the display: 1 for yes, 0 for no, -1 for
// adaptive, where a swap that comes late does not wait. Not every platform grants it.

/// False if the platform refuses.
bool _KXSetVerticalSync(int interval);
/// What is in force.
int _KXVerticalSync();
