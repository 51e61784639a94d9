#pragma once

#include "Track.h"

Track makeClick(); ///< A button.
Track makePick();  ///< A moth is caught.
Track makeFeed();  ///< The fire flares up.
Track makeHop();
Track makeHurt();
Track makeBat();  ///< A bat comes: wings and a squeak.
Track makeDawn(); ///< The night is won.
Track makeDark(); ///< The fire is out.
