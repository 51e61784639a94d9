#pragma once

#include "World.h"

// What is done with keys and pads. In the game that are actions, which the players bind as they like; menus
// have keys of their own, so that they can be used whatever is bound.
namespace Controls {
inline constexpr int playerCount = 2, actionsOfPlayer = 5;
/// The names of what each player does: as Input has it.
inline constexpr const char* ofPlayer[playerCount][actionsOfPlayer] = {
    {"first left", "first right", "first up", "first down", "first hop"},
    {"second left", "second right", "second up", "second down", "second hop"}};
inline constexpr const char *pause = "pause", *fullscreen = "fullscreen";

/// Arrows, space and the first pad; W, A, S, D where a US keyboard has them, shift and the second pad.
KXActions defaults();
/// What a player does in this step. A hop that was over before the step is none the less one.
Input inputOf(const KXActions& actions, int player);
/// The same, and what the mouse says: a player at @a feet goes to the pointer while the left button is held,
/// and hops with the right one.
Input withMouse(Input input, KXPoint feet);

// Menus: the arrows, the d-pad and the left stick of any pad; Return and A; Escape and B.

/// Where to go in this step, as often as a key repeats: x to the right, y downward.
KXPoint menuMoves();
bool menuChooses();
bool menuLeaves();
} // namespace Controls
