#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Writes a WAV file of one channel; false if that fails.
bool saveWav(const std::string& path, int rate, const std::vector<std::int16_t>& samples);
