#pragma once

#include <Kobaltrix/KXTypes.h>

// The signs that say what is chosen, drawn of upright strips, which are sharp at every size, or as discs.

/// A hook in the middle of a square box of whole pixels.
void _KXDrawHook(KXRect box, KXColor color);
/// A filled disc in the middle of a box.
void _KXDrawDisc(KXRect box, int radius, KXColor color);
