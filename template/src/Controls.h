#pragma once

#include <Kobaltrix/Kobaltrix.h>

/// What the player steers with: the arrow keys, the places of W, A, S and D, or any pad.
class Controls {
public:
    /// @param file may say something else. It need not be there, and may be null.
    explicit Controls(const char* file);

    /// Where the player steers in this step: -1 to 1 in each direction.
    KXPoint push() const;
    bool leaves() const;
    bool switchesFullscreen() const;

private:
    KXActions _actions;
};
