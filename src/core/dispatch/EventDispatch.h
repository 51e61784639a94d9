#pragma once

#include <Kobaltrix/KXEvents.h>

#include <SDL_events.h>

/// The event being dispatched.
extern constinit SDL_Event _KXMainEvent;

/// Called for resized windows while the game has set no function of its own.
void _KXNoOpWindowResizedCallback(unsigned windowID, KXSize size);

/// Stands between the platform and the dispatch while a run is recorded or replayed.
class _KXEventTape {
public:
    /// An event of the platform has been taken. @param counts whether it reaches the described state, too.
    virtual void keep(const SDL_Event& event, bool counts) = 0;
    /// The next event that was kept in this step, in place of the platform's; false when it has no more.
    virtual bool give(SDL_Event& event, bool& counts) = 0;

protected:
    constexpr _KXEventTape() = default;
    ~_KXEventTape() = default;
};
inline constinit _KXEventTape* _KXRunningEventTape = nullptr;

/// Frees the text that comes with some events.
void _KXFreeEvent(SDL_Event& event);

/// Reads every waiting event into the input state, the windows and the quit request.
void _KXDispatchEvents();
