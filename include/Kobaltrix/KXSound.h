#pragma once

#include <Kobaltrix/KXVoice.h>

#include <stdint.h>

#include <cstddef>
#include <memory>

/// @file
/// Sound effects: short samples, held in memory whole, that play on mixing channels.
///
/// There are 8 mixing channels unless KXSetMixingChannels() was called. A sound owns none of them: every
/// KXSound::play() takes the first that is free, and the sound remembers its number until it is stopped,
/// played again or destroyed. When it has ended by itself, another sound may take that channel; stop(),
/// isPlaying(), volume(), setPanning() and setDistance() of the first then act on it all the same.
///
/// Volumes are 0 (silent) to 128 (full); what lies outside becomes the nearest of the two.
///
/// KXSound::start() is the newer way: it gives a KXVoice, which has a pitch, fades, a place in a view and a
/// group, and is forgotten when it ends.

struct Mix_Chunk;

/// A sound that a game has made: samples from -1 to 1, the channels' side by side.
struct KXSamples {
    const float* values = nullptr; ///< frames * channels of them; what is not a number is 0.
    std::size_t frames = 0;        ///< How many there are for each channel.
    int channels = 1;              ///< 1 to 8.
    int frequency = 44100;         ///< Frames per second, 1000 to 768000.
};

/// A sound effect. It works while the audio device is open, see KXInitAudio().
///
/// A sound may outlive the device: while it is closed nothing plays and play() gives false. Opening the
/// device again loads the file again, since the new device may want other samples; if that fails, play()
/// goes on giving false.
class KX_API KXSound {
public:
    /// Never makes a sound: throws std::bad_alloc.
    KXSound();
    /// Loads a file: WAV, OGG or what else SDL_mixer reads. Throws std::bad_alloc if it cannot be loaded, for
    /// null, and while the audio device is closed; no text is left in KXError() then. Throws the same with a
    /// text for one that takes more memory than KXSetMaximumSoundBytes() allows.
    explicit KXSound(const char* path);
    /// Loads the bytes of a sound file, which are copied. Throws as for a path.
    KXSound(const void* file, std::size_t size);
    /// Makes a sound of samples, which are copied. Throws std::bad_alloc where a number is out of range or
    /// there are none, with a text in KXError(), and as for a path.
    explicit KXSound(const KXSamples& samples);
    /// Stops what sounds of it, on every channel and as a voice, and what plays on the channel it remembers.
    ~KXSound();
    KXSound(const KXSound&) = delete;
    KXSound& operator=(const KXSound&) = delete;

    /// Plays the sound from its beginning on the first free channel. If it sounds already, a second copy of
    /// it starts, and only that is remembered.
    /// @param loops how often it is repeated: 0 plays it once, 1 twice, -1 and less for ever.
    /// @return false when no channel is free, while the device is closed, and when there is nothing to play.
    bool play(int loops);
    /// Lets a voice begin with the sound.
    /// @return it; none, which is not playing, if 64 voices are heard already, while the device is closed,
    /// and when there is nothing to play.
    KXVoice start(const KXSoundOptions& options = KXSoundOptions());
    /// The same at a place in the world, see KXSetSoundView().
    KXVoice startAt(KXPoint place, const KXSoundOptions& options = KXSoundOptions());
    /// How long it is at a pitch of 1, in seconds; 0 when there is nothing to play.
    double length() const;

    /// Stops the channel of the last play(), and forgets it.
    void stop();
    /// Sets the sound's own volume, 0 to 128, now and for every later play(). It is heard scaled by the
    /// volume of KXSetSoundVolume(): volume * that / 128, without the fraction.
    void setVolume(int volume);
    /// The scaled volume that the channel has now, 0 to 128; 0 when the sound has no channel.
    int volume() const;
    /// Whether the channel of the last play() is playing.
    bool isPlaying() const;
    /// Sets how loud the left and the right speaker are, 0 to 255; only the low 8 bits of the values count.
    /// Lasts until the present playing ends; 255, 255 is as if it was never set. Does nothing without a
    /// channel, and on a device with one output channel.
    void setPanning(int left, int right);
    /// Sets how far away the sound is, from 0 (near) to 255 (hardly to be heard); only the low 8 bits of the
    /// value count. Lasts until the present playing ends. Does nothing without a channel.
    void setDistance(int distance);

private:
    struct KX_INTERNAL Loader;
    KX_INTERNAL void _load(std::unique_ptr<Loader> loader);
    KX_INTERNAL bool _hasChannel() const;

    Mix_Chunk* _chunk;               // null while the device is closed
    int32_t _channel;                // of the last play; -1: none
    int32_t _volume;                 // the sound's own
    std::unique_ptr<Loader> _loader; // follows the device being closed and opened
};

/// Sets the volume of all sound effects, 0 to 128, which it is at first. It scales every voice but those of
/// KXSoundGroupMusic. Every channel takes this value at once; a sound's own volume counts again from its next
/// KXSound::play() or KXSound::setVolume() on. It may be set before the device is opened and outlives its
/// closing.
KX_API void KXSetSoundVolume(int volume);

/// Sets how many bytes a sound may take when it is decoded for the device, 134217728 at the start: 12 minutes
/// at what KXInitAudio() opens. A small file may decode to hours; to find that out takes no more than four
/// times as much memory, and 16 times the file. Counts for what is loaded from now on.
KX_API void KXSetMaximumSoundBytes(uint32_t bytes);

/// Stops every channel, and every voice but those of KXSoundGroupMusic. The music goes on.
KX_API void KXStopAllSounds();
