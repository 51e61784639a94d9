#pragma once

/// Number of the library's run. KXDeInit() ends one, and with it whatever was set up in the platform: who
/// remembers the number that it was set up under can tell.
inline constinit unsigned _KXLibraryRun = 0;
