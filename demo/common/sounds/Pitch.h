#pragma once

#include <string_view>
#include <vector>

/// The hertz of a note such as "A4", "C#5" or "Bb3"; the fourth octave's A has 440.
double pitch(std::string_view name);

/// The parts of a text between its spaces.
std::vector<std::string_view> words(std::string_view text);
