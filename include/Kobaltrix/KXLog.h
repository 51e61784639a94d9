#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The log: one text file, beside the executable or elsewhere, with categories that are switched on one by
/// one.
///
/// The library itself writes nothing to it. A message looks like
/// `[03/07/2024 14:05:09]: net Connected to peer 2`: the local time with the month first, the category, the
/// text. Messages end where the game ends them: give the "\n" yourself.
///
/// Messages are gathered and written in blocks of some kilobytes, each a whole number of messages, and each
/// in one go at the end of the file. So several processes may log to one file (on a disk of their machine)
/// and every message stays in one piece. But they do not stand in the order of time: those of a process come
/// in blocks between those of the others, each process's own in order. A process that crashes or is killed
/// loses the messages of its last block. One that opens the file with @a overwrite empties it for all.

/// Opens the log file in the folder of KXExecutablePath, or in the working directory if there is no such
/// path. A log that is open already is closed first; its categories stay.
/// @param fileName the file's name, or a path below that folder; null for no file.
/// @param overwrite 0 appends to the file, any other value empties it first.
///
/// A file that cannot be opened is not reported: messages then go to standard output alone, if that is
/// switched on.
KX_API void KXInitializeLog(const char* fileName, int overwrite);

/// Opens the log at any path, as KXInitializeLog() does in its folder; where a game is installed that folder
/// is not the player's to write into, but KXUserPath("log.txt") is.
/// @param path as fopen() takes it. Null fails with the text that is in KXError() already, so that what
///   KXUserPath() gave can be handed on.
/// @param overwrite 0 appends to the file, any other value empties it first.
/// @return -1, or 0 with a text in KXError(): the log is initialised without a file then.
KX_API int KXOpenLog(const char* path, int overwrite);

/// Writes out and closes the log file and forgets all categories. Until the log is initialised again, nothing
/// is logged. Safe without an open log.
KX_API void KXDeinitializeLog();

/// Logs a message, formatted like printf and cut to 1023 bytes.
///
/// Nothing happens while the log is not initialised and while the category is not enabled.
/// @param category null for a message of no category, which is always logged; a name, with the blank after
/// it, is cut to 1023 bytes.
/// @param format as for printf; null does nothing.
KX_API void KXLog(const char* category, const char* format, ...) KX_PRINTF(2, 3);

/// Has the messages of a category logged. Only while the log is initialised; null does nothing.
KX_API void KXLogEnableCategory(const char* category);

/// Has the messages of a category no longer logged. Only while the log is initialised; null does nothing.
KX_API void KXLogDisableCategory(const char* category);

/// Switches on (any value but 0) or off (0) that every message is printed on standard output too. It is off
/// at first and may be switched at any time; it outlives KXDeinitializeLog().
KX_API void KXLogSetEnableSTDOut(int on);
