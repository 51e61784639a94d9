#pragma once

#include <Kobaltrix/KXAudio.h>

inline constinit int _KXAudioInitialized = 0; ///< -1 while the mixer is open.

/// Stops the music and closes the mixer if it is open.
void _KXDeInitAudio();
