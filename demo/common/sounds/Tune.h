#pragma once

#include "Track.h"

#include <span>

/// One bar of the tune. The bass, the lead and the drums have eight steps each.
struct Bar {
    const char* chord; ///< Its notes, held for the whole bar, and picked one after the other.
    const char* bass;  ///< Notes; "--" holds the one before, ".." is silence.
    const char* lead;
    const char* drums; ///< o a soft drum, s a brush, t a tick, . nothing.
};

/// A tune that can be looped: bass, chords, a lead and drums.
/// @param step seconds that an eighth of a bar lasts; a whole number of samples, of which a second has 22050.
Track makeTune(std::span<const Bar> score, double step);
