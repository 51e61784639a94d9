#include "audio/AudioDevice.h"

#include "audio/MusicStream.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"

#include <Kobaltrix/KXError.h>

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <limits>
#include <string>

// Every living object, the newest first. It has no destructor, so it is still there for a sound that is a
// static object of the game and is destroyed after the library's own.
static constinit _KXMixerObject* newestObject = nullptr;

_KXMixerObject::_KXMixerObject() : _next(newestObject), _previous(nullptr) {
    if (_next)
        _next->_previous = this;
    newestObject = this;
}

_KXMixerObject::~_KXMixerObject() {
    if (_next)
        _next->_previous = _previous;
    (_previous ? _previous->_next : newestObject) = _next;
}

bool _KXMixerIsOpen() { return Mix_QuerySpec(nullptr, nullptr, nullptr) != 0; }

int KXInitAudio() { return KXInitAudio(44100, 0x8010, 2, 1024); }

// False with a text in the error slot.
static bool openMixer(int frequency, unsigned short format, int channels, int chunkSize) {
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) < 0) {
        _KXReportError("Couldn't initialize SDL: %s", SDL_GetError());
        return false;
    }
    // The platform keeps channels and chunk size in fewer bits than an int and takes 0 for a value of its own
    // choice. It waits for the end of a chunk before it closes: with a few frames a second that takes
    // minutes.
    const bool inRange = frequency >= 1000 && channels > 0 && channels <= std::numeric_limits<Uint8>::max() &&
                         chunkSize > 0 && chunkSize <= std::numeric_limits<Uint16>::max();
    if (!inRange)
        SDL_SetError("frequency, channels or chunk size out of range");
    if (!inRange || Mix_OpenAudio(frequency, format, channels, chunkSize) < 0) {
        _KXReportError("Unable to initialize audio: %s", SDL_GetError());
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    return true;
}

// The platform's driver for no device takes the samples in their time. The next opening looks for a device
// again.
static bool openSilence(const KXAudioOptions& options) {
    SDL_SetHintWithPriority("SDL_AUDIODRIVER", "dummy", SDL_HINT_OVERRIDE);
    const bool isOpen = openMixer(options.frequency, options.format, options.channels, options.chunkSize);
    SDL_ResetHint("SDL_AUDIODRIVER");
    return isOpen;
}

static int beginAudio() {
    _KXAudioInitialized = -1;
    _KXMusicPlayed.reset();
    for (_KXMixerObject* object = newestObject; object; object = object->next()) {
        object->unload(); // there is something only if the game had opened the mixer itself
        object->load();
    }
    return -1;
}

int KXInitAudio(int frequency, unsigned short format, int channels, int chunkSize) {
    _KXDeInitAudio();
    const auto open = [=] { return openMixer(frequency, format, channels, chunkSize); };
    if (!_KXAnswerTo(_KXQuestion::Sound, open))
        return 0;
    // In a replay the recorded game could hear, and goes on as if it did.
    if (_KXIsReplaying() && !open() && !openSilence({frequency, format, channels, chunkSize}))
        return 0;
    return beginAudio();
}

int KXInitAudioOrSilence(const KXAudioOptions& options) {
    if (KXInitAudio(options.frequency, options.format, options.channels, options.chunkSize))
        return -1;
    const std::string why = KXError(); // looking for silence may leave a text of its own
    if (!openSilence(options))
        return 0;
    _KXReportError("%s", why.c_str());
    _KXAudioIsSilent = -1;
    return beginAudio();
}

int KXAudioIsSilent() { return _KXAudioIsSilent; }

void _KXDeInitAudio() {
    if (!_KXAudioInitialized)
        return;
    for (_KXMixerObject* object = newestObject; object; object = object->next())
        object->unload();
    Mix_HaltMusic();
    Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    _KXAudioInitialized = _KXAudioIsSilent = 0;
}

void KXSetMixingChannels(int count) {
    // A negative count only asks the mixer for the present one. Memory for billions of channels may not be
    // there, which the mixer does not notice.
    constexpr int most = 65536;
    if (count >= 0 && _KXMixerIsOpen())
        Mix_AllocateChannels(std::min(count, most));
}
