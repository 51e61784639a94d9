#pragma once

#include <SDL_events.h>

#include <string>
#include <string_view>

// Events of the platform as lines of a recording: "key-down 1 1520 0 4 97 0". The name is followed by the
// window and the time, then by what the event has of its own; texts stand in quotation marks. An asterisk
// behind the name says that the described state was not told of it.

/// The line of an event; empty for one that no game can notice.
std::string _KXLineOfEvent(const SDL_Event& event, bool counts);
/// Reads such a line. False if it is none; a text that comes with the event is the caller's to free.
bool _KXReadEvent(std::string_view line, SDL_Event& event, bool& counts);

/// Where an event has its window's identifier; null for one that belongs to no window.
Uint32* _KXWindowOf(SDL_Event& event);
