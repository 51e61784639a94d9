#pragma once

#include "Assets.h"

#include <array>
#include <memory>

enum class Effect { Click, Pick, Feed, Hop, Hurt, Bat, Dawn, Dark, Count };

/// The game's sounds and its music. Without an audio device, or without the files, the game is silent.
class Audio {
public:
    explicit Audio(const Assets& assets);

    void play(Effect effect);
    /// Plays an effect where it happens in the window.
    void play(Effect effect, KXPoint at);
    /// Volumes from 0 to 128.
    void setVolumes(int sounds, int music);
    /// Halts what sounds in the world, and has the music step back behind a menu.
    void setPaused(bool paused);

private:
    void setMusicVolume();

    std::array<std::unique_ptr<KXSound>, static_cast<std::size_t>(Effect::Count)> _effects;
    std::unique_ptr<KXMusic> _music;
    float _musicVolume = 1;
    bool _paused = false;
    unsigned _hops = 0;
};
