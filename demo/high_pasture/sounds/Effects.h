#pragma once

#include "Track.h"

// What is heard in the pasture.
Track makeClick();
Track makeJump();
Track makeLand();
Track makePick();
Track makeStomp();
Track makeTumble();
Track makeBell();
Track makeHome();
