#pragma once

#include <Kobaltrix/KXApplication.h>

/// Works out KXApplicationName, KXExecutablePath and KXBundlePath from the path the process was started by,
/// which is cut at its last slash unless it lies in an application bundle.
void _KXFindApplicationPaths(char* executablePath);
/// Frees and forgets the three texts.
void _KXForgetApplicationPaths();

/// -1 when a quit was requested.
inline constinit int _KXAppQuitRequested = 0;
