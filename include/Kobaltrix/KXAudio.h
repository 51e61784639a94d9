#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The audio device, which KXSound and KXMusic need. It is closed by KXDeInit().

/// Opens the audio device with 44100 Hz, signed 16-bit samples, 2 channels, chunks of 1024 sample frames, as
/// the other KXInitAudio() does.
KX_API int KXInitAudio();
/// Opens the audio device, closing an open one first: that stops everything that plays. The sounds and music
/// of the game are loaded again, to fit the new device.
/// @param frequency sample frames per second, 1000 or more. @param format the platform's sample format
/// (0x8010: signed 16-bit, lowest byte first).
/// @param channels output channels, 1 to 255. @param chunkSize sample frames mixed at a time, 1 to 65535.
/// @return -1 on success, 0 on failure with a text in KXError(); the device is closed then.
KX_API int KXInitAudio(int frequency, unsigned short format, int channels, int chunkSize);
/// Sets how many sounds can play at the same time, 0 to 65536, which more becomes; channels above the count
/// are stopped. It is 8 whenever the device was opened. Does nothing while the device is closed and for a
/// negative count.
KX_API void KXSetMixingChannels(int count);

/// What the audio device is asked for. See KXInitAudio() for the ranges.
struct KXAudioOptions {
    int frequency = 44100;          ///< Sample frames per second.
    unsigned short format = 0x8010; ///< The platform's sample format: signed 16-bit, lowest byte first.
    int channels = 2;               ///< Output channels.
    int chunkSize = 1024;           ///< Sample frames mixed at a time: at 44100 Hz a delay of 23 ms.
};

/// Opens the audio device as KXInitAudio() does; if there is none that can be opened, the game goes on in
/// silence: everything works, plays and ends in its time, and nothing is heard. KXError() then says why, and
/// opening it again looks for a device again.
/// @return -1, also in silence; 0 with a text in KXError() for numbers that are out of range.
KX_API int KXInitAudioOrSilence(const KXAudioOptions& options = KXAudioOptions());
/// Whether nothing is heard since KXInitAudioOrSilence() found no device: -1 or 0.
KX_API int KXAudioIsSilent();
