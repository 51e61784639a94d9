#pragma once

#include "Canvas.h"

Canvas drawBackground(); ///< A valley at dusk, 400 x 250.
Canvas drawPanel();      ///< A frame with corners of 8 pixels.
Canvas drawLogo();       ///< The game's name, 44 x 7.
Canvas drawGlow();       ///< A round light, 64 x 64.
Canvas drawMoon();       ///< 16 x 16.
Canvas drawLogs();       ///< What the fire burns on, 16 x 6.

// The sheets of the sprites; what their frames are is written in the JSON files beside this one.
Canvas drawHeroSheet();   ///< Who keeps the fire: 7 frames of 16 x 20, looking right and, below, left.
Canvas drawFriendSheet(); ///< The second player, in another coat.
Canvas drawMothSheet();   ///< 3 frames of flight and 3 of a flare, 8 x 8.
Canvas drawBatSheet();    ///< 3 frames of 16 x 10.
Canvas drawFireSheet();   ///< 4 frames of 16 x 16.
