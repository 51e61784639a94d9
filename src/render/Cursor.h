#pragma once

#include <Kobaltrix/KXCursor.h>

/// Gives the pointer another shape for this step, while it is over a widget that has one.
void _KXLendCursor(KXCursor cursor);
/// Ends the step: shows what was lent in it, or again the shape that the game has set.
void _KXSettleCursor();
/// What is lent, -1 for nothing.
int _KXLentCursor();
