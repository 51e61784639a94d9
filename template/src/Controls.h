#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <string>

/// What the player steers with: the arrow keys, the places of W, A, S and D, or any pad.
class Controls {
public:
    /// @param file may say something else; it need not be there.
    explicit Controls(const std::string& file);

    /// Where the player steers in this step: -1 to 1 in each direction.
    KXPoint push() const;
    bool leaves() const;

private:
    KXActions _actions;
};
