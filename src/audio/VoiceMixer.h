#pragma once

#include <Kobaltrix/KXVoice.h>

#include "core/ground/Lock.h"

#include <cstdint>
#include <mutex>

struct Mix_Chunk;

/// The voices, and what is mixed of them into the mixer's own sum before that goes to the device. The mixer's
/// channels could not do it: they know no pitch, and lose a volume that is set while they fade.
///
/// The audio thread mixes; the game says what. All that both touch is guarded by one lock, which the audio
/// thread holds while it mixes a chunk and the game for a few assignments. It is never held while the mixer
/// is called, which has a lock of its own.
class _KXVoiceMixer {
public:
    static constexpr std::uint32_t most = 64; ///< Voices at the same time.
    static constexpr std::size_t groups = 16;

    struct Voice {
        std::uint32_t number = 0;         ///< Of the KXVoice; 0: free.
        const Mix_Chunk* chunk = nullptr; ///< In the device's format.
        std::int64_t frames = 0;          ///< Of the chunk.
        double at = 0;                    ///< The frame that is heard next.
        int repeats = 0;                  ///< Still to come; negative: for ever.
        float now[2] = {};                ///< How loud left and right are, gliding to what they should be.
        float fade = 1, fadePerFrame = 0; ///< How much of that is heard.
        float volume = 1, pan = 0, pitch = 1;
        KXPoint place = {0, 0};
        bool hasPlace = false, isPaused = false;
        std::size_t group = 0;
    };
    struct Group {
        float volume = 1;
        bool isPaused = false;
    };

    /// Lets a voice begin. @return its number; 0 if there is no room or no mixer.
    std::uint32_t begin(const Mix_Chunk* chunk, const KXSoundOptions& options, const KXPoint* place);
    /// Ends all that plays this chunk.
    void forget(const Mix_Chunk* chunk);

    /// Calls @a act with the voice of a number, if it still plays. @return whether it does.
    template<class Act>
    bool with(std::uint32_t number, Act act) {
        const std::scoped_lock lock(_lock);
        Voice& voice = _voices[number % most];
        const bool plays = number != 0 && voice.number == number;
        if (plays)
            act(voice);
        return plays;
    }
    /// Calls @a act with each voice that plays.
    template<class Act>
    void each(Act act) {
        const std::scoped_lock lock(_lock);
        for (Voice& voice : _voices)
            if (voice.number != 0)
                act(voice);
    }
    /// Calls @a act with the group.
    template<class Act>
    void withGroup(KXSoundGroup group, Act act) {
        const std::scoped_lock lock(_lock);
        act(_groups[index(group)]);
    }
    static std::size_t index(KXSoundGroup group) {
        return group >= 0 && static_cast<std::size_t>(group) < groups ? static_cast<std::size_t>(group) : 0;
    }

    void setView(const KXSoundView& view);
    void setMasterVolume(float volume);
    void pauseAll(bool isPaused);
    bool isAllPaused();
    /// The music is at a place now, in seconds, and goes on from there.
    void setMusicPlace(double seconds);
    void pauseMusic(bool isPaused);
    /// Where the music would be if it did not go round. The mixer tells whole seconds for some files.
    double musicPlace();
    /// Frames per second of the device, 0 while it is closed.
    int frequency() const { return _frequency; }
    /// Within with() and each(): stops a voice, at once or when it has faded out.
    void stop(Voice& voice, int fadeOutMilliseconds) const;
    /// The same: goes to a place in the sound, its end at the latest.
    void seek(Voice& voice, double seconds) const;

private:
    /// Adds a voice to the sum. @return false when it has ended.
    using Mixing = bool (*)(Voice& voice, const float (&wanted)[2], float glide, unsigned char* out,
                            int frames, int channels);

    bool attach();
    static void mix(int, void* stream, int length, void* mixer);
    static void detach(int, void* mixer);
    float fadeOf(int milliseconds) const;
    bool isHalted(const Voice& voice) const;
    void findLoudness(const Voice& voice, float (&sides)[2]) const;

    _KXLock _lock;
    Voice _voices[most];
    Group _groups[groups];
    KXSoundView _view;
    float _masterVolume = 1;
    bool _isPaused = false, _isMusicPaused = false;
    double _musicPlace = 0;
    std::uint32_t _begun = 0; ///< Voices so far.
    bool _isAttached = false; ///< To the mixer.
    int _frequency = 0, _channels = 0, _frameSize = 0;
    Mixing _mixing = nullptr;
};

/// What the game says of a voice, within its range.
float _KXVoiceVolume(float volume);
float _KXVoicePitch(float pitch);
float _KXVoicePan(float pan);

inline constinit _KXVoiceMixer _KXVoices;
