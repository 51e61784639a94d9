#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Random numbers drawn from the C library's `rand()`. KXInit() seeds it with the time of day; `srand()`
/// after it makes them repeatable. Nothing here allocates or fails. A generator of the game's own, with the
/// same numbers on every system, is a KXRandomGenerator.
///
/// Each system's library has numbers of its own. While a game is recorded or replayed (KXRecording.h) they
/// are those of the GNU C library everywhere, from the recording's seed; where `rand()` would give others,
/// `srand()` changes nothing then, and a game's own calls of `rand()` draw other numbers than on another
/// system.

/// A whole number from @a min to @a max, both included; 0 if @a min is greater than @a max. Any two ints are
/// a valid range, the widest one too.
KX_API int KXRandomize(int min, int max);

/// A number from @a min to @a max in steps of a ten-thousandth; 0.0 if @a min is greater than @a max or
/// either is not a number. Both bounds are first rounded toward zero to four decimals, both may be drawn, and
/// every step between them is about equally likely. The result also keeps to the unrounded bounds unless no
/// number lies within both.
KX_API float KXRandomizef(float min, float max);

/// -1 with about the given chance in percent, else 0. One of 101 outcomes is drawn: 0 never succeeds, 100
/// succeeds 100 times in 101, and only more than 100 always succeeds.
KX_API int KXRandomPercentChance(int percent);

/// One of the eight directions or none, all nine equally likely.
KX_API KXDirection KXRandomDirection();
/// Left, up, down or right, all four equally likely.
KX_API KXDirection KXRandomCardinalDirection();
