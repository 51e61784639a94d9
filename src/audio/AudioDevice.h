#pragma once

#include <Kobaltrix/KXAudio.h>

inline constinit int _KXAudioInitialized = 0; ///< -1 while the mixer is open.

/// Lets go of all that is loaded, stops the music and closes the mixer if it is open.
void _KXDeInitAudio();

/// Whether the mixer is open, whoever opened it. With a closed one most of its functions must not be called:
/// they would reach for channels that are gone.
bool _KXMixerIsOpen();

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
