#pragma once

#include "Assets.h"

#include <initializer_list>
#include <memory>
#include <vector>

/// A game's sounds, by their numbers, and its music. Without an audio device, or without the files, the game
/// is silent.
class CommonAudio {
public:
    /// @param files of the sounds, without ".wav"; the music is music.wav.
    CommonAudio(const Assets& assets, std::initializer_list<const char*> files);

    /// Volumes from 0 to 128.
    void setVolumes(int sounds, int music);
    /// Halts what sounds in the world, and has the music step back behind a menu.
    void setPaused(bool paused);

protected:
    /// Plays a sound that has no place.
    void start(std::size_t sound);
    /// Plays a sound where it happens in the view.
    void start(std::size_t sound, KXPoint at, const KXSoundOptions& options);

private:
    void setMusicVolume();

    std::vector<std::unique_ptr<KXSound>> _sounds;
    std::unique_ptr<KXMusic> _music;
    float _musicVolume = 1;
    bool _paused = false;
};
