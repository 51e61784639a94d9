#pragma once

#include "MenuControls.h"
#include "World.h"

// What is done with keys and pads in the game: actions, which the player binds as they like.
namespace Controls {
inline constexpr const char *left = "left", *right = "right", *jump = "jump", *down = "down",
                            *pause = "pause";
/// All that are offered for another key.
inline constexpr const char* all[] = {left, right, jump, down, pause, fullscreen};

KXActions defaults();
/// What the player does in this step.
Input inputOf(const KXActions& actions);
} // namespace Controls
