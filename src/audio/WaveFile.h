#pragma once

/// What a file is loaded for. Only music heeds the places where a WAV file says that it goes round.
enum class _KXAudioUse { Sound, Music };

/// Whether the mixer may be given a file: false if it cannot be opened, or claims what the mixer would
/// believe without looking: an impossible sample rate or number of channels, or more loops than it has.
bool _KXAudioFileIsSane(const char* path, _KXAudioUse use);
