#pragma once

#include "Canvas.h"

Canvas drawBackground(); ///< A valley at dusk, 400 x 250.
Canvas drawPanel();      ///< A frame with corners of 8 pixels.
Canvas drawCrate();      ///< One side of a crate, 32 x 32.
Canvas drawKeys();       ///< What every key does.

// The sheets of the sprites; what their frames are is written in the JSON files beside this one.
Canvas drawHeroSheet(); ///< The one who walks there: 7 frames of 16 x 20, looking right and, below, left.
Canvas drawMothSheet(); ///< 3 frames of flight and 3 of a flare, 8 x 8.
Canvas drawFireSheet(); ///< 4 frames of 16 x 16.
