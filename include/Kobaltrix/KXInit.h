#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// Start-up and shut-down.
///
/// Everything runs on the game's one thread, the thread that owns the OpenGL context. Truth values are ints:
/// -1 for yes, 0 for no.

/// Finds out where the application lives, then starts the library as KXInit() does.
/// @param executablePath the path the process was started by (`argv[0]`). The text is cut in place at its
/// last
///   slash; the name is what stands behind it, the folder what is left. A slash at the very beginning is not
///   looked at: of `game` and of `/game` the whole text is the name, and there is no folder. May be null:
///   then no path is set.
///
/// A path that holds "Contents/MacOS" leads into an application bundle. It is not cut; the path that
/// KXBundlePath would have is printed on standard output and, if there is something at it, becomes
/// KXBundlePath and the working directory.
/// @return -1 on success, 0 on failure with a text in KXError().
KX_API int KXInit(char* executablePath);

/// Starts the library: platform layer (timer, video, joystick), font cache, keyboard, 60 steps per second,
/// random seed. @return -1 on success, 0 on failure with a text in KXError().
KX_API int KXInit();

/// Shuts the library down: audio, paths, game pad, fonts, cached textures, error text, platform layer.
/// Windows and textures that are still alive stay safe to destroy but no longer do anything. Safe without
/// KXInit().
KX_API void KXDeInit();
