#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdint.h>

/// @file
/// Recordings of a run, and their replay.
///
/// A recording holds what a game's behaviour depends on beside its own files: the events of each logic step,
/// the clocks' readings, the sizes of windows, the random seed. Replayed, it makes the same steps and the
/// same pictures, in a window or without a display, as fast as the machine can. It is a text, one event a
/// line; the page on replays describes it and says what it does not hold.
///
/// Every game can be recorded and replayed without a line of its own, by variables of the environment that
/// KXInit() looks at:
///
/// - `KOBALTRIX_RECORD=FILE` records the whole run.
/// - `KOBALTRIX_REPLAY=FILE` replays one. The game ends as it did then. If it behaves otherwise, the process
///   says at which step and ends with 1.
/// - `KOBALTRIX_REPLAY_PACE=recorded` keeps to the clock, `fast` does not; without it a replay keeps to the
///   clock where there is a display.
/// - `KOBALTRIX_REPLAY_STOP=STEP` ends the replay with the first picture after that step, and
///   `KOBALTRIX_REPLAY_PICTURE=FILE` keeps the picture (.png, else BMP).
/// - `KOBALTRIX_RECORD_PIXELS=N` keeps a hash of each N-th picture, 0 of none; without it each 60th of a run
///   that the environment records, and none of what KXBeginRecording() does.
///
/// What is typed or pasted into a masked text entry is never recorded: a replay types an x for each
/// character.
///
/// KXInit() fails if that cannot be done, or if both a recording and a replay are asked for. A recording that
/// cannot be written any more ends, with a text in KXError() and on the error channel; the game goes on.
///
/// All calls belong to the thread that runs the logic loop, after KXInit() unless it says otherwise.

/// With a non-zero @a ignore KXInit() does not look at the environment: for a game that is shipped. To be
/// called before KXInit().
KX_API void KXIgnoreRecordingVariables(int ignore);

/// Begins a recording from here on, after ending what was recorded or replayed until now. Nothing counts as
/// held or owed, and the C library's random numbers begin anew, so the game has to begin anew as well.
/// @param path the file, which is replaced. One that is there stays as PATH.before until this one is whole.
/// @return -1, or 0 with a text in KXError().
KX_API int KXBeginRecording(const char* path);
/// Begins to replay a recording that KXBeginRecording() made at the same place in the game.
/// @return -1, or 0 with a text in KXError() that names the line if the file is damaged.
KX_API int KXBeginReplay(const char* path);
/// Ends the recording or the replay that is under way; the game goes on with the world as it is. Where the
/// environment asks for a replay, that is the end of the process.
KX_API void KXEndRecording();

/// What is under way.
enum KXRecordingState : int {
    KXRecordingNone = 0, ///< Nothing, or it was ended by KXEndRecording().
    KXRecordingRecords,  ///< A recording is written.
    KXRecordingReplays,  ///< A recording is replayed; the user is not heard.
    KXRecordingReplayed, ///< A replay has come to its end.
    KXRecordingApart     ///< A replay has gone another way than the recording; KXError() tells where.
};
/// What is under way, or how the last replay has ended.
KX_API KXRecordingState KXRecordingStateNow();
/// The logic steps since the recording or the replay began.
KX_API uint64_t KXRecordingSteps();
