#pragma once

#include <string>

/// Whether a name comes before another as a reader counts: "walk 9" before "walk 10".
bool comesBefore(const std::string& a, const std::string& b);
