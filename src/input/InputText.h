#pragma once

#include <Kobaltrix/KXActions.h>

#include <string>
#include <string_view>

// Inputs as they stand in files: "key Space", "position W", "mouse Left", "pad A" for any pad and "pad2 A"
// for the second. Positions and buttons that have no name are written by number: "position #104".

/// An input as text, empty if it is none that can be bound.
std::string _KXInputToText(const KXInput& input);
/// The input that a text stands for, of the kind None if it stands for none.
KXInput _KXInputFromText(std::string_view text);
/// Whether a text can stand within a line: it has no control characters and no blanks at its ends.
bool _KXIsPlainText(std::string_view text);
