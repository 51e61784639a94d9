#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <memory>

/// @file
/// Music: one piece at a time, read from its file while it plays.
///
/// There is one music stream. All pieces share it: playing one replaces the one before, and stop(), pause(),
/// resume(), isPlaying() and the volume concern the stream, whatever piece is asked.

struct _Mix_Music;

/// A piece of music. It works while the audio device is open, see KXInitAudio().
///
/// A piece may outlive the device: while it is closed nothing plays and play() fails. Opening the device
/// again loads the file again; if that fails, play() goes on failing. The file must stay there as long as the
/// piece lives.
class KX_API KXMusic {
public:
    /// Never makes a piece of music: throws std::bad_alloc.
    KXMusic();
    /// Opens a file: OGG, WAV or what else SDL_mixer reads. Throws std::bad_alloc if it cannot be loaded, for
    /// null, and while the audio device is closed; no text is left in KXError().
    explicit KXMusic(const char* path);
    /// Stops the music, also when it is another piece that plays; not if the piece is one that could not be
    /// loaded again.
    ~KXMusic();
    KXMusic(const KXMusic&) = delete;
    KXMusic& operator=(const KXMusic&) = delete;

    /// Plays the piece from its beginning, in place of what plays now.
    /// @param loops how often it is played: -1 and less for ever, 0 and 1 once, 2 twice. (A sound's count is
    ///   of repeats.)
    /// @return false on failure, with a text in KXError(); nothing plays then.
    bool play(int loops);
    /// Stops the music.
    void stop();
    /// Halts the music until resume().
    void pause();
    /// Goes on with music that was halted by pause().
    void resume();
    /// Whether a piece was begun and has not ended; a paused one plays too.
    bool isPlaying() const;
    /// Sets the volume of the music, 0 (silent) to 128 (full); what lies outside becomes the nearest of the
    /// two. Opening the device sets it to 128.
    void setVolume(int volume);
    /// The volume of the music, 0 to 128.
    int volume() const;

private:
    struct KX_INTERNAL Loader;

    _Mix_Music* _music;              // null while the device is closed
    std::unique_ptr<Loader> _loader; // follows the device being closed and opened
};
