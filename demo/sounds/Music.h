#pragma once

#include "Track.h"

/// Plays the score; its end goes over into its beginning.
Track makeMusic();
