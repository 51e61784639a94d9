#pragma once

/// Whether the mixer may be given a file: false if it cannot be opened, or is a WAV or AIFF file with an
/// impossible sample rate or number of channels. The mixer divides by them without looking.
bool _KXAudioFileIsSane(const char* path);
