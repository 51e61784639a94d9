#pragma once

/// Whether keys are those of macOS. A test may pretend.
#ifdef __APPLE__
inline constinit bool _KXIsMac = true;
#else
inline constinit bool _KXIsMac = false;
#endif
