#include "audio/MusicStream.h"

#include "audio/VoiceMixer.h"

#include <SDL_mixer.h>

void _KXMusicStream::apply() const {
    float share = 1;
    bool isHalted = isPaused || _KXVoices.isAllPaused();
    _KXVoices.withGroup(KXSoundGroupMusic, [&](const _KXVoiceMixer::Group& group) {
        share = group.volume;
        isHalted = isHalted || group.isPaused;
    });
    Mix_VolumeMusic(static_cast<int>(static_cast<float>(volume) * share));
    isHalted ? Mix_PauseMusic() : Mix_ResumeMusic();
    _KXVoices.pauseMusic(isHalted);
}

void _KXMusicStream::reset() {
    *this = _KXMusicStream();
    apply();
}

void _KXMusicStream::stop(int fadeOutMilliseconds) {
    next = nullptr;
    if (fadeOutMilliseconds > 0 && !Mix_PausedMusic())
        Mix_FadeOutMusic(fadeOutMilliseconds);
    else
        Mix_HaltMusic();
}
