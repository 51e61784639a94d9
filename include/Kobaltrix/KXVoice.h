#pragma once

#include <Kobaltrix/KXPlatform.h>
#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

/// @file
/// Voices: what KXSound::start() lets be heard. Each can be made louder, higher, moved, halted and faded
/// while it plays, and belongs to a group that has a volume of its own.
///
/// @code
/// KXSetGroupVolume(KXSoundGroupEffects, options.effects); // 0 to 1
/// KXSoundOptions step;
/// step.pitch = random.floatInRange(0.9f, 1.1f);
/// footstep.start(step);
/// KXVoice wings = bat.startAt(batPlace); // to the left or right, as it is in the view
/// @endcode
///
/// Up to 64 voices are heard at the same time, beside the mixing channels of KXSound::play(). Volumes are 0
/// (silent) to 1 (full); one that changes glides there within 10 ms, so nothing clicks. Times go by what the
/// audio device has played. Numbers that are out of range count as the nearest that is in it, and what is not
/// a number as the default.
///
/// Needs the thread that runs the logic loop. Nothing here allocates memory, once the first voice was heard.

/// What a sound is for. Each group has a volume, and can be halted. Numbers up to 15 that have no name are
/// the game's own; a number that is no group counts as KXSoundGroupEffects.
enum KXSoundGroup : int {
    KXSoundGroupEffects = 0,   ///< What happens in the game.
    KXSoundGroupMusic = 1,     ///< KXMusic, and sounds that are pieces of music.
    KXSoundGroupSpeech = 2,    ///< What is spoken.
    KXSoundGroupInterface = 3, ///< Clicks of buttons: heard while the game is halted.
    KXSoundGroupOwn = 4        ///< The first of the game's own; 15 is the last.
};

/// How a sound begins.
struct KXSoundOptions {
    /// What it is for.
    KXSoundGroup group = KXSoundGroupEffects;
    /// How loud it is, 0 to 1. The group's volume is on top of it.
    float volume = 1;
    /// How fast it plays, and with that how high: 2 is an octave higher and takes half the time. 0.0625 to
    /// 16. Between two samples it is a straight line, so what is much slower loses its brightness.
    float pitch = 1;
    /// Where it is heard: -1 left, 0 in the middle, 1 right. The side that it moves away from fades as a
    /// cosine, the other stays; on a device of one channel it is always in the middle.
    float pan = 0;
    /// How often it is repeated: 0 plays it once, 1 twice, -1 and less for ever. There is no gap between.
    int loops = 0;
    /// Milliseconds in which it becomes as loud as it is, in a straight line.
    int fadeInMilliseconds = 0;
    /// Where in the sound it begins, in seconds.
    double startSeconds = 0;
};

/// A sound that is heard: a number that may be copied and kept as long as one likes. When the sound has ended
/// it stands for nothing, never for another one, and all that it is told does nothing.
class KX_API KXVoice {
public:
    /// None.
    KXVoice() : _number(0) {}

    /// Stops it. @param fadeOutMilliseconds the time that it would take from full to silence, in a straight
    /// line: less if it is fading in; 0 and less is at once. It plays until it is silent.
    void stop(int fadeOutMilliseconds = 0);
    /// Halts it until resume(). It keeps its place, and still counts as playing.
    void pause();
    /// Goes on. While its group, or everything, is halted it waits for those too.
    void resume();
    /// Sets its volume, 0 to 1.
    void setVolume(float volume);
    /// Sets its pitch, see KXSoundOptions::pitch.
    void setPitch(float pitch);
    /// Sets where it is heard, -1 left to 1 right. It has no place in the world then.
    void setPan(float pan);
    /// Sets where in the world it is: how loud and where it is heard follows from KXSetSoundView().
    void setPlace(KXPoint place);
    /// Goes to a place in the sound, in seconds from its beginning; its end is the furthest.
    void seek(double seconds);
    /// Where in the sound it is, in seconds from its beginning; 0 when it has ended.
    double position() const;
    /// Whether it has begun and not ended. A replay answers as its recording did.
    bool isPlaying() const;

private:
    friend class KXSound;
    explicit KXVoice(uint32_t number) : _number(number) {}

    uint32_t _number;
};

/// What of the world is heard, and where: see KXSetSoundView().
struct KXSoundView {
    /// The part of the world that is seen, such as KXCameraBounds() of the camera.
    KXRect area = {{0, 0}, {0, 0}};
    /// Where a sound at the left and the right edge of the area is heard: 1 is all left and all right, 0 the
    /// middle.
    float spread = 0.75f;
    /// How far beyond the edges of the area, in its units, a sound can still be heard: it becomes quieter in
    /// a straight line. A negative one is the longer side of the area.
    float reach = -1;
};

/// Sets where voices with a place are heard from now on, those that play too; call it when the camera has
/// moved. Within the area a sound is as loud as it is, to the left or right as it lies there. Until it is
/// called, and with an area that is empty or has a number that is none, all are in the middle.
KX_API void KXSetSoundView(const KXSoundView& view);

/// Sets how loud a group is, 0 to 1, which it is at first: voices that play, and later ones. For
/// KXSoundGroupMusic it also scales the volume of KXMusic. It outlives the device.
KX_API void KXSetGroupVolume(KXSoundGroup group, float volume);
/// How loud a group is, 0 to 1.
KX_API float KXGroupVolume(KXSoundGroup group);
/// Halts a group: what plays keeps its place, and what is begun waits. KXSoundGroupMusic halts KXMusic too.
KX_API void KXPauseGroup(KXSoundGroup group);
/// Has a group go on, all but what was halted by itself.
KX_API void KXResumeGroup(KXSoundGroup group);
/// Stops the voices of a group, and KXMusic with KXSoundGroupMusic.
/// @param group which. @param fadeOutMilliseconds as for KXVoice::stop().
KX_API void KXStopGroup(KXSoundGroup group, int fadeOutMilliseconds = 0);
/// Halts everything that is to be heard, also what KXSound::play() began, and the music: for a game that
/// lies in the background. What is begun waits.
KX_API void KXPauseAllSounds();
/// Has everything go on, all but what was halted by itself or with its group.
KX_API void KXResumeAllSounds();
