#pragma once

/// How many more calls of the system and of the driver are granted to the library, and to those who read
/// files for it, until one is refused. Negative for all.
inline constinit long callsUntilRefusal = -1;
/// The last call that was refused.
inline constinit const char* refusedCall = "";

/// Lets the functions that the driver of the current window has given the library be refused as well.
void makeDriverRefusable();
