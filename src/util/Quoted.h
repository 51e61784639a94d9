#pragma once

#include <string>
#include <string_view>

/// A text in quotation marks, on one line whatever it holds.
std::string _KXQuoted(std::string_view text);
/// Takes a text in quotation marks from the front of a line. False if there is none.
bool _KXTakeQuoted(std::string_view& line, std::string& text);
