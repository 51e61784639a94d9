#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <string>

// What a screen for keys and pads does with actions.
namespace Controls {
/// The inputs of an action, those of pads last; "nothing" if it has none.
std::string inputsOf(const KXActions& actions, const char* action);
/// Gives an action another input. A key takes the place of keys, a pad's button that of pads' buttons: both
/// can be used. What had the input before loses it. @return who has lost it, for the player; empty if nobody.
std::string rebind(KXActions& actions, const char* action, const KXInput& input);
} // namespace Controls
