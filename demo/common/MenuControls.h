#pragma once

#include <Kobaltrix/Kobaltrix.h>

// Menus have keys of their own, so that they can be used whatever is bound: the arrows, the d-pad and the
// left stick of any pad; Return and A; Escape and B.
namespace Controls {
/// The action that each game has.
inline constexpr const char* fullscreen = "fullscreen";

/// Where to go in this step, as often as a key repeats: x to the right, y downward.
KXPoint menuMoves();
bool menuChooses();
bool menuLeaves();
} // namespace Controls
