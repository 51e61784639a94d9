#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// Where a game finds the files that come with it, and where it keeps what belongs to its player.
///
///     KXSetGameName("Ada's Games", "firefly");
///     ...
///     sprite.load(KXDataPath("firefly.spr"));
///     settings.load(KXUserPath("settings.txt"));
///
/// The answers are the same however the program was started: by its path, through PATH, by a symbolic link,
/// or from another folder. (#KXExecutablePath is what the shell gave, and #KXBundlePath what follows from
/// that.)
///
/// Paths are absolute, in UTF-8, and temporary strings, which here are never cut. A call that fails gives
/// null with a text in KXError(). None needs KXInit(), all belong to the thread that runs the logic loop, and
/// recordings do not hold what they give: it differs between machines, and what depends on it should be no
/// more than which files are opened. Where memory is exhausted they throw std::bad_alloc.

/// Gives the game the name that its folders have. Without it they have that of the program's file, less
/// ".exe".
///
/// To be called before anything is asked for below, with a name that never changes: what the player has saved
/// is found by it.
/// @param maker a folder around that of the player's files, for who makes many games; null for none.
/// @param name such as "firefly".
/// @return -1; 0 with a text in KXError(), and nothing changes, for what cannot be the name of a folder: an
///   empty text, "." and "..", and what holds a slash or a control character; on Windows also what nothing
///   can be called there (see KXFile.h).
KX_API int KXSetGameName(const char* maker, const char* name);

/// The folder of the program's file, without links and without a slash at its end.
KX_API const char* KXProgramFolder();

/// The folder of the files that come with the game: the first of these that there is.
///
/// - what the environment has in `KOBALTRIX_DATA_FOLDER`, and then no other: for tests and developers
/// - of a program in an application bundle, "Resources/NAME" in its Contents, or "Resources/assets"
/// - "assets" beside the program, as in a build folder
/// - "../share/NAME" and "../share/games/NAME" from the program, as where it is installed
///
/// Null if there is none, with a text that names them: ask once, before anything is loaded.
KX_API const char* KXDataFolder();
/// The path of a file in KXDataFolder(), whether there is one or not.
/// @param name may name folders, such as "sounds/hop.wav". Null for one that leads out of the folder: an
///   absolute path, or one with "..".
KX_API const char* KXDataPath(const char* name);

/// The folder of what the player sets and saves, made if there is none: "[MAKER/]NAME" in the folder that the
/// system keeps for that ($XDG_DATA_HOME, else ~/.local/share; on macOS ~/Library/Application Support; on
/// Windows AppData/Roaming). Only the player may look into it. `KOBALTRIX_USER_FOLDER` in the environment is
/// another, for tests.
KX_API const char* KXUserFolder();
/// The path of a file in KXUserFolder(), whether there is one or not; the folders on its way are made.
/// @param name as KXDataPath() takes it.
KX_API const char* KXUserPath(const char* name);
