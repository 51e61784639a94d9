#pragma once

/// Plays the part of a person where there is none: feeds the events due at a logic step of a short script to
/// the platform, so that the demo reads them like any other input.
/// @param windowID the window they happen in.
void playScript(int step, unsigned windowID);

/// The number of frames after which the script has shown everything.
inline constexpr int scriptLength = 120;
