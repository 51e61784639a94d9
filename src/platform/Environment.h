#pragma once

#include <optional>
#include <string>

/// A variable of the process's environment, as it is now.
std::optional<std::string> _KXEnvironment(const char* name);
