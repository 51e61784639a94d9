#pragma once

#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

/// @file
/// Start-up and shut-down, the logic loop, the last error, the quit request and the user-interface colours.
///
/// Everything runs on the game's one thread, the thread that owns the OpenGL context. Truth values are ints:
/// -1 for yes, 0 for no.
///
/// A game calls, in this order: KXInit(), a KXWindow, KXResetLogicLoop(); then per frame KXPreLogicLoop(),
/// `while (KXLogicLoop()) { one logic step; KXLogicUpdate(); }`, drawing, KXWindow::swapBuffers(),
/// KXFPSTick() and KXPostLogicLoop(); at the end KXDeInit().

/// The executable's file name. Set by KXInit(char*), null before; belongs to the library.
extern KX_API const char* KXApplicationName;
/// The folder that holds the executable, without a trailing slash (for an application bundle: the folder that
/// holds the bundle, with it). Set by KXInit(char*), null where the path names no folder.
extern KX_API const char* KXExecutablePath;
/// The application's own resource folder inside its bundle; null unless it exists.
extern KX_API const char* KXBundlePath;
/// The window identifier that the event being dispatched carries; 4294967295 before the first event. For
/// joystick and touch events it is the device's identifier.
extern KX_API unsigned KXCurrentEventWindowID;

/// Finds out where the application lives, then starts the library as KXInit() does.
/// @param executablePath the path the process was started by (`argv[0]`). Outside a bundle the text is cut in
///   place at its last slash. Without a slash the whole text is the application's name and there is no
///   folder. May be null: then no path is set.
/// @return -1 on success, 0 on failure with a text in KXError().
KX_API int KXInit(char* executablePath);

/// Starts the library: platform layer (timer, video, joystick), font cache, keyboard, 60 steps per second,
/// random seed. @return -1 on success, 0 on failure with a text in KXError().
KX_API int KXInit();

/// Shuts the library down: audio, paths, game pad, fonts, cached textures, error text, platform layer.
/// Windows and textures that are still alive stay safe to destroy but no longer do anything. Safe without
/// KXInit().
KX_API void KXDeInit();

/// The last failure's text, cut to 511 bytes; empty while there is none. Belongs to the library.
KX_API const char* KXError();

/// Asks for the end of the game; so does the platform's quit event. The game polls the request.
KX_API void KXApplicationRequestQuit();
/// Takes the request to quit back.
KX_API void KXApplicationCancelQuitRequest();
/// -1 while a quit is requested, else 0. The library never ends the process by itself.
KX_API int KXApplicationQuitRequested();

/// Logic steps per second.
KX_API unsigned KXLogicInterval();
/// Sets the logic steps per second, 1 to 1000 (0 becomes 1, more becomes 1000). A step then takes
/// 1000 / speed milliseconds, an integer: 16 ms at 60. Takes effect at the next KXPreLogicLoop().
KX_API void KXSetLogicInterval(unsigned speed);

/// Starts the loop afresh: nothing is owed but one step, which the first frame runs.
KX_API void KXResetLogicLoop();
/// Begins a frame: works out how many logic steps are due. There is no upper limit; after a long stall the
/// logic catches up with every step owed.
KX_API void KXPreLogicLoop();
/// -1 if a logic step is due, after reading every waiting event into the input state; 0 if none is due, and
/// then no event is read.
KX_API int KXLogicLoop();
/// Ends one logic step and frees the temporary strings. After the frame's last step the time owed that is
/// shorter than a step is dropped.
KX_API void KXLogicUpdate();
/// Ends the frame: a wheel notch is forgotten.
KX_API void KXPostLogicLoop();

/// Whole seconds counted by the logic loop, at most one per step.
KX_API int64_t KXElapsedTime();
/// Sets the count of KXElapsedTime() to 0.
KX_API void KXResetElapsedTime();

/// Frames counted in the last measuring period of just over a second; 0 before the first has ended.
KX_API int KXFPS();
/// Counts one frame.
KX_API void KXFPSTick();

/// Keeps temporary strings alive across logic steps; calls nest.
KX_API void KXDisableTemporaryStringCleanup();
/// Undoes one KXDisableTemporaryStringCleanup(); more calls than those do nothing.
KX_API void KXEnableTemporaryStringCleanup();

/// Sets the colours that widgets take over when they are constructed.
KX_API void KXSetUIColor(KXColor border, KXColor background, KXColor backgroundInteraction, KXColor selection,
                         KXColor focus, KXColor text);

/// Called with a window's identifier and its new size in points.
typedef void (*KXWindowResizedCallback)(unsigned windowID, KXSize size);
/// Sets the function that is called, from KXLogicLoop(), when a window was resized; null for none.
KX_API void KXSetWindowResizedCallback(KXWindowResizedCallback callback);
