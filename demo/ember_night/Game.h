#pragma once

#include "GameOf.h"
#include "StartScene.h"

using Game = GameOf<App, Options>;
