#pragma once

#include <Kobaltrix/KXMusic.h>

/// The stream that all pieces of music share, as the game wants it.
struct _KXMusicStream {
    int volume = 128;              ///< Without the group's.
    bool isPaused = false;         ///< By itself, not by its group.
    _Mix_Music* playing = nullptr; ///< Or the last that did.
    KXMusic* next = nullptr;       ///< What begins when the present piece has faded out.
    KXMusicOptions options;        ///< Of the next.

    /// Gives the mixer's stream the volume of its group too, and halts it with its group.
    void apply() const;
    /// All is as at first: the mixer was opened.
    void reset();
    /// Has the music fade out, or stops it at once. Nothing is next then.
    void stop(int fadeOutMilliseconds);
};

inline constinit _KXMusicStream _KXMusicPlayed;
