#pragma once

union SDL_Event;

/// Makes events of the library of what the platform tells, and hands them to the input of the step.
void _KXTakePlatformEvent(const SDL_Event& event);

/// A window event of the library's own, in the form of the platform's: its density is data1, in thousandths.
inline constexpr unsigned char _KXWindowEventDensity = 200;
