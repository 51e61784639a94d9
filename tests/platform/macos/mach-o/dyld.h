#pragma once

#include <cstdint>

extern "C" int _NSGetExecutablePath(char* path, std::uint32_t* size);
