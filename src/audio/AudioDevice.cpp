#include "audio/AudioDevice.h"

#include "core/ErrorSlot.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <limits>

int KXInitAudio() { return KXInitAudio(44100, 0x8010, 2, 1024); }

int KXInitAudio(int frequency, unsigned short format, int channels, int chunkSize) {
    _KXDeInitAudio();
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) < 0) {
        _KXReportError("Couldn't initialize SDL: %s", SDL_GetError());
        return 0;
    }
    // The platform keeps channels and chunk size in fewer bits than an int and takes 0 for "whatever you
    // like".
    const bool inRange = frequency > 0 && channels > 0 && channels <= std::numeric_limits<Uint8>::max() &&
                         chunkSize > 0 && chunkSize <= std::numeric_limits<Uint16>::max();
    if (!inRange)
        SDL_SetError("frequency, channels or chunk size out of range");
    if (!inRange || Mix_OpenAudio(frequency, format, channels, chunkSize) < 0) {
        _KXReportError("Unable to initialize audio: %s", SDL_GetError());
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return 0;
    }
    _KXAudioInitialized = -1;
    return -1;
}

void _KXDeInitAudio() {
    if (!_KXAudioInitialized)
        return;
    Mix_HaltMusic();
    Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    _KXAudioInitialized = 0;
}

void KXSetMixingChannels(int count) {
    if (count >= 0) // a negative count only asks the mixer for the present one
        Mix_AllocateChannels(count);
}
