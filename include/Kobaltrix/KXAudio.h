#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The audio device.

/// Opens the audio device with 44100 Hz, signed 16-bit samples, 2 channels, chunks of 1024 sample frames.
/// @return -1 on success, 0 on failure with a text in KXError().
KX_API int KXInitAudio();
/// Opens the audio device, closing an open one first.
/// @param frequency sample frames per second. @param format the platform's sample format (0x8010: signed
/// 16-bit).
/// @param channels output channels. @param chunkSize sample frames mixed at a time.
/// @return -1 on success, 0 on failure with a text in KXError().
KX_API int KXInitAudio(int frequency, unsigned short format, int channels, int chunkSize);
/// Sets how many sounds can play at the same time; channels above the count are stopped. Needs an open
/// device.
KX_API void KXSetMixingChannels(int count);
