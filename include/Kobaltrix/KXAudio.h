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
