#pragma once

union SDL_Event;

/// Makes events of the library of what the platform tells, and hands them to the input of the step.
void _KXTakePlatformEvent(const SDL_Event& event);
