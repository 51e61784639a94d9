#pragma once

#include "GameOf.h"
#include "Scenes.h"

using Game = GameOf<App, Options>;
