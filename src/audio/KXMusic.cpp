#include <Kobaltrix/KXMusic.h>

#include "audio/AudioDevice.h"
#include "audio/WaveFile.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>

struct KXMusic::Loader final : _KXMixerObject {
    Loader(KXMusic& owner, const char* file) : music(owner), path(file) {}
    void load() override {
        music._music =
            _KXAudioFileIsSane(path.c_str(), _KXAudioUse::Music) ? Mix_LoadMUS(path.c_str()) : nullptr;
    }
    void unload() override;

    KXMusic& music;
    std::string path;
};

void KXMusic::Loader::unload() {
    if (!music._music)
        return;
    Mix_HaltMusic();
    Mix_FreeMusic(music._music);
    music._music = nullptr;
}

KXMusic::KXMusic() { throw std::bad_alloc(); }

KXMusic::KXMusic(const char* path) : _music(nullptr) {
    if (!path || !_KXMixerIsOpen())
        throw std::bad_alloc();
    _loader = std::make_unique<Loader>(*this, path);
    _loader->load();
    if (!_music)
        throw std::bad_alloc();
}

KXMusic::~KXMusic() { _loader->unload(); }

bool KXMusic::play(int loops) {
    Mix_HaltMusic();
    if (!_KXMixerIsOpen())
        Mix_SetError("Audio device hasn't been opened");
    const bool plays = _KXMixerIsOpen() && Mix_PlayMusic(_music, std::max(loops, -1)) == 0;
    if (_KXAnswerTo(_KXQuestion::Sound, [plays] { return plays; }))
        return true;
    _KXReportError("Unable to play music: %s", SDL_GetError());
    return false;
}

void KXMusic::stop() { Mix_HaltMusic(); }

void KXMusic::pause() { Mix_PauseMusic(); }

void KXMusic::resume() { Mix_ResumeMusic(); }

bool KXMusic::isPlaying() const { return _KXAnswerTo(_KXQuestion::Sound, Mix_PlayingMusic) != 0; }

void KXMusic::setVolume(int volume) { Mix_VolumeMusic(std::max(volume, 0)); }

int KXMusic::volume() const { return Mix_VolumeMusic(-1); }
