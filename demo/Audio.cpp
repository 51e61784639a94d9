#include "Audio.h"

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
    if (!KXInitAudio()) {
        KXLog("audio", "no sound: %s", KXError());
        return;
    }
    constexpr std::array files = {"click", "pick", "feed", "hop", "hurt", "bat", "dawn", "dark"};
    for (std::size_t i = 0; i < files.size(); ++i)
        _effects[i] = load<KXSound>(assets.path(KXTempString("%s.wav", files[i])));
    _music = load<KXMusic>(assets.path("music.wav"));
    if (_music)
        _music->play(-1);
}

void Audio::play(Effect effect) {
    if (const auto& sound = _effects[static_cast<std::size_t>(effect)])
        sound->play(0);
}

void Audio::play(Effect effect, float x) {
    play(effect);
    if (const auto& sound = _effects[static_cast<std::size_t>(effect)]) {
        KXClampf(&x, 0, 1);
        sound->setPanning(static_cast<int>(255 * (1 - x)), static_cast<int>(255 * x));
    }
}

void Audio::setVolumes(int sounds, int music) {
    KXSetSoundVolume(sounds);
    if (_music)
        _music->setVolume(music);
}
