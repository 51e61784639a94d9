#pragma once

#include <Kobaltrix/KXSound.h>

#include <cstdint>

inline constinit std::int32_t _KXMasterVolume = 128; ///< Scales the volume of every sound, 0 to 128.
