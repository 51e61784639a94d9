#pragma once

#include <string>

/// Reads a sprite file strictly and says on standard error what is wrong with it. Whether nothing is.
bool checkSprite(const std::string& path);
