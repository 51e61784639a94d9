#pragma once

#include <cstddef>
#include <string>

struct SDL_RWops;

/// What a file is loaded for. Only music heeds the places where a WAV file says that it goes round.
enum class _KXAudioUse { Sound, Music };

/// Where a sound or a piece of music is read from: a file, or the bytes of one.
struct _KXAudioSource {
    std::string path; ///< Empty: bytes.
    std::string bytes;

    /// Opens it, at its beginning, for who closes it; null if it cannot be opened or the mixer may not be
    /// given it, because it claims what the mixer would believe without looking: an impossible sample rate or
    /// number of channels, or more loops than it has.
    SDL_RWops* open(_KXAudioUse use) const;
};

struct KXSamples;

/// The bytes of a WAV file of these samples. Empty, with a text in the error slot, if a number is out of
/// range.
std::string _KXWaveFileOf(const KXSamples& samples);
