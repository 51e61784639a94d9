#include "Audio.h"

#include "Style.h"

#include <iterator>
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

Audio::Audio(const Assets& assets) {
    if (!KXInitAudioOrSilence() || KXAudioIsSilent())
        KXLog("audio", "no sound: %s", KXError());
    KXSetSoundView({{{0, 0}, Style::windowSize}});
    constexpr std::array files = {"click", "pick", "feed", "hop", "hurt", "bat", "dawn", "dark"};
    for (std::size_t i = 0; i < files.size(); ++i)
        _effects[i] = load<KXSound>(assets.path(KXTempString("%s.wav", files[i])));
    _music = load<KXMusic>(assets.path("music.wav"));
    if (_music)
        _music->start({.fadeInMilliseconds = 2500});
}

void Audio::play(Effect effect) {
    if (const auto& sound = _effects[static_cast<std::size_t>(effect)])
        sound->start({.group = KXSoundGroupInterface});
}

void Audio::play(Effect effect, KXPoint at) {
    constexpr float pitches[] = {1, 1.06f, 0.95f, 1.02f, 0.91f}; // no two hops in a row are the same
    KXSoundOptions options;
    if (effect == Effect::Hop)
        options.pitch = pitches[_hops++ % std::size(pitches)];
    if (const auto& sound = _effects[static_cast<std::size_t>(effect)])
        sound->startAt(at, options);
}

void Audio::setVolumes(int sounds, int music) {
    constexpr float loudest = 128;
    for (const KXSoundGroup group : {KXSoundGroupEffects, KXSoundGroupInterface})
        KXSetGroupVolume(group, static_cast<float>(sounds) / loudest);
    _musicVolume = static_cast<float>(music) / loudest;
    setMusicVolume();
}

void Audio::setMusicVolume() {
    KXSetGroupVolume(KXSoundGroupMusic, _paused ? _musicVolume / 3 : _musicVolume);
}

void Audio::setPaused(bool paused) {
    _paused = paused;
    setMusicVolume();
    paused ? KXPauseGroup(KXSoundGroupEffects) : KXResumeGroup(KXSoundGroupEffects);
}
