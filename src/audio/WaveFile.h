#pragma once

/// Whether the mixer may be given a file: false if it cannot be opened, or is a WAV or AIFF file with a
/// format that nobody ever recorded. The mixer would divide by a sample rate of 0 and reckon with negative
/// ones.
bool _KXAudioFileIsSane(const char* path);
