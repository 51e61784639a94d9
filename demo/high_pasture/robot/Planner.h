#pragma once

#include "World.h"

#include <string>

// A way through a level is a text of acts, each of which is held for some steps: r to the right, l to the
// left, . for neither, and the same in R, L and ! with jump.

/// Looks for a way home: by trying what may be pressed in copies of the world, the most promising first.
/// @return empty if there is none, or it is too hard to find.
std::string findWay(const World& from);

/// What is pressed in each step of a way.
std::vector<Input> inputsOf(const std::string& way);
