#pragma once

#include "Canvas.h"

Canvas drawBackground(); ///< A valley at dusk, 400 x 250.
Canvas drawFigure();     ///< The one who walks in it, 16 x 20.
Canvas drawPanel();      ///< A frame with corners of 8 pixels.
Canvas drawCrate();      ///< One side of a crate, 32 x 32.
Canvas drawKeys();       ///< What every key does.
