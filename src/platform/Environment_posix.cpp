#include "platform/Environment.h"

#include <cstdlib>

std::optional<std::string> _KXEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}
