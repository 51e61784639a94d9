#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// Where the application lives, and the request to quit.

/// The executable's file name; all of a path that has no slash behind its first character, so "/game" for
/// "/game". Set by KXInit(char*), null before; belongs to the library.
extern KX_API const char* KXApplicationName;
/// The folder that holds the executable, without a trailing slash. For an application bundle it is the folder
/// that holds the bundle, with the slash, or the whole path where it names none. Set by KXInit(char*), null
/// where the path names no folder.
extern KX_API const char* KXExecutablePath;
/// The application's own resource folder inside its bundle, "Contents/Resources/NAME"; null unless it exists.
extern KX_API const char* KXBundlePath;

/// Asks for the end of the game; so does the platform's quit event. The game polls the request.
KX_API void KXApplicationRequestQuit();
/// Takes the request to quit back.
KX_API void KXApplicationCancelQuitRequest();
/// -1 while a quit is requested, else 0. The library never ends the process by itself.
KX_API int KXApplicationQuitRequested();
