#include "CommonAudio.h"

#include <new>

template<class Sound>
static std::unique_ptr<Sound> load(const char* path) {
    try {
        return std::make_unique<Sound>(path);
    } catch (const std::bad_alloc&) {
        KXLog("audio", "%s cannot be played", path);
        return nullptr;
    }
}

CommonAudio::CommonAudio(const Assets& assets, std::initializer_list<const char*> files) {
    if (!KXInitAudioOrSilence() || KXAudioIsSilent())
        KXLog("audio", "no sound: %s", KXError());
    for (const char* file : files)
        _sounds.push_back(load<KXSound>(assets.path(KXTempString("%s.wav", file))));
    _music = load<KXMusic>(assets.path("music.wav"));
    if (_music)
        _music->start({.fadeInMilliseconds = 2500});
}

void CommonAudio::start(std::size_t sound) {
    if (_sounds[sound])
        _sounds[sound]->start({.group = KXSoundGroupInterface});
}

void CommonAudio::start(std::size_t sound, KXPoint at, const KXSoundOptions& options) {
    if (_sounds[sound])
        _sounds[sound]->startAt(at, options);
}

void CommonAudio::setVolumes(int sounds, int music) {
    constexpr float loudest = 128;
    for (const KXSoundGroup group : {KXSoundGroupEffects, KXSoundGroupInterface})
        KXSetGroupVolume(group, static_cast<float>(sounds) / loudest);
    _musicVolume = static_cast<float>(music) / loudest;
    setMusicVolume();
}

void CommonAudio::setMusicVolume() {
    KXSetGroupVolume(KXSoundGroupMusic, _paused ? _musicVolume / 3 : _musicVolume);
}

void CommonAudio::setPaused(bool paused) {
    _paused = paused;
    setMusicVolume();
    paused ? KXPauseGroup(KXSoundGroupEffects) : KXResumeGroup(KXSoundGroupEffects);
}
