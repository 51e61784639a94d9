#pragma once

#include "MenuControls.h"
#include "World.h"

// What is done with keys and pads in the game: actions, which the players bind as they like.
namespace Controls {
inline constexpr int playerCount = 2, actionsOfPlayer = 5;
/// The names of what each player does: as Input has it.
inline constexpr const char* ofPlayer[playerCount][actionsOfPlayer] = {
    {"first left", "first right", "first up", "first down", "first hop"},
    {"second left", "second right", "second up", "second down", "second hop"}};
inline constexpr const char* pause = "pause";

/// Arrows, space and the first pad; W, A, S, D where a US keyboard has them, shift and the second pad.
KXActions defaults();
/// What a player does in this step. A hop that was over before the step is none the less one.
Input inputOf(const KXActions& actions, int player);
/// The same, and what the mouse says: a player at @a feet goes to the pointer while the left button is held,
/// and hops with the right one.
Input withMouse(Input input, KXPoint feet);
} // namespace Controls
