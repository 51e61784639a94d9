#pragma once

/// Works out KXApplicationName, KXExecutablePath and KXBundlePath from the path the process was started by,
/// which is cut at its last slash unless it lies in an application bundle.
void _KXFindApplicationPaths(char* executablePath);
/// Frees and forgets the three texts.
void _KXForgetApplicationPaths();
