#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <cstddef>
#include <memory>

/// @file
/// Music: one piece at a time, read from its file while it plays.
///
/// There is one music stream. All pieces share it: playing one replaces the one before, and stop(), pause(),
/// resume(), isPlaying(), the volume and the position concern the stream, whatever piece is asked.
///
/// Two streams cannot play at the same time, so one piece fades out before the next fades in. Pieces that are
/// to be heard together, one fading into the other, are loaded whole, as a KXSound whose voices belong to
/// KXSoundGroupMusic.

struct _Mix_Music;

/// How a piece of music begins.
struct KXMusicOptions {
    /// How often it is played: -1 and less for ever, 0 and 1 once, 2 twice.
    int loops = -1;
    /// Milliseconds in which what plays now fades out before. 0 and less stops it.
    int fadeOutMilliseconds = 0;
    /// Milliseconds in which the piece fades in.
    int fadeInMilliseconds = 0;
    /// Where in the piece it begins, in seconds. Repeats begin at its beginning.
    double startSeconds = 0;
};

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
    /// Opens the bytes of a file, which are copied. Throws as for a path.
    KXMusic(const void* file, std::size_t size);
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
    /// Plays the piece as the options say. While what plays now fades out the piece waits, and counts as
    /// playing; it begins in a KXLogicUpdate(). What is paused does not fade out but is stopped.
    /// @return false on failure, with a text in KXError(), such as for a place to begin at that the piece has
    /// not. A piece that had to wait and fails then is silent, with a text.
    bool start(const KXMusicOptions& options = KXMusicOptions());
    /// Stops the music.
    void stop();
    /// Has the music fade out. @param fadeOutMilliseconds 0 and less stops it at once.
    void stop(int fadeOutMilliseconds);
    /// Halts the music until resume().
    void pause();
    /// Goes on with music that was halted by pause().
    void resume();
    /// Whether a piece was begun and has not ended; a paused one plays too.
    bool isPlaying() const;
    /// Sets the volume of the music, 0 (silent) to 128 (full); what lies outside becomes the nearest of the
    /// two. Opening the device sets it to 128.
    void setVolume(int volume);
    /// The volume of the music, 0 to 128, scaled by that of KXSoundGroupMusic.
    int volume() const;
    /// Goes to a place in the piece that plays, in seconds from its beginning.
    /// @return false if nothing plays, there is no such place, or its kind of file cannot do it, with a text
    /// in KXError(). WAV, OGG, FLAC, MP3 and Opus can. The end of a piece is no place in it.
    bool seek(double seconds);
    /// Where in the piece that plays the music is, in seconds from its beginning: what the device has taken
    /// of it, in whole chunks. 0 if nothing plays. A replay answers as its recording did.
    double position() const;
    /// How long this piece is, in seconds; 0 while the device is closed, and where its file does not tell.
    double length() const;

    KX_LIBRARY_ONLY
    /// Lets the piece begin that waits for another one to fade out. The logic loop calls it.
    KX_INTERNAL static void _tend();

private:
    struct KX_INTERNAL Loader;
    KX_INTERNAL void _load(std::unique_ptr<Loader> loader);
    KX_INTERNAL bool _begin(const KXMusicOptions& options);

    _Mix_Music* _music;              // null while the device is closed
    std::unique_ptr<Loader> _loader; // follows the device being closed and opened
};
