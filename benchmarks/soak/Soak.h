#pragma once

#include "Watch.h"

#include <string>

/// A step of a run that is repeated: each returns false when something is not as it should be.
bool soakNight(const std::string& folder, const std::string& recording, Watch& watch);
bool soakServer(Watch& watch);
