#pragma once

#include "core/ground/Tape.h"

#include <Kobaltrix/KXAudio.h>

#include <cmath>

inline constinit int _KXAudioInitialized = 0; ///< -1 while the mixer is open.
inline constinit int _KXAudioIsSilent = 0;    ///< -1 while it is open without a device.

/// Lets go of all that is loaded, stops the music and closes the mixer if it is open.
void _KXDeInitAudio();

/// Whether the mixer is open, whoever opened it. With a closed one most of its functions must not be called:
/// they would reach for channels that are gone.
bool _KXMixerIsOpen();

/// A time that the mixer tells, in seconds, as a replay hears it too; 0 for one that it does not know.
template<class Ask>
double _KXSecondsOfMixer(Ask ask) {
    constexpr double micro = 1e6;
    const std::int64_t whole = _KXAnswerTo(
        _KXQuestion::Sound, [&] { return static_cast<std::int64_t>(std::fmax(ask(), 0) * micro); });
    return static_cast<double>(whole) / micro;
}

/// Something that is loaded into the mixer. What is loaded can be used only until the mixer closes: some
/// decoders end then, and the samples have its format, which may be another one when it opens again. So it is
/// unloaded before the mixer closes, and loaded once more when it is open again.
class _KXMixerObject {
public:
    _KXMixerObject();
    virtual ~_KXMixerObject();
    _KXMixerObject(const _KXMixerObject&) = delete;
    _KXMixerObject& operator=(const _KXMixerObject&) = delete;

    virtual void load() = 0;
    virtual void unload() = 0;

    _KXMixerObject* next() const { return _next; }

private:
    _KXMixerObject* _next;
    _KXMixerObject* _previous;
};
