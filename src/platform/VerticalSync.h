#pragma once

/// Asks that the current OpenGL context's buffer swaps wait for the display. Not every platform grants it,
/// and a refusal is no error.
void _KXEnableVerticalSync();
