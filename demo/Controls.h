#pragma once

#include "World.h"

/// What somebody does: arrow keys and space, and the pad unless another player has it.
Input firstPlayerInput(bool alsoPad);
/// The letters W, A, S and D with the shift key, and the pad if the first player has no use for it.
Input secondPlayerInput(bool alsoPad);
