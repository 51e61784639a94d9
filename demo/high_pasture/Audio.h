#pragma once

#include "CommonAudio.h"
#include "World.h"

/// The pasture's sounds.
class Audio : public CommonAudio {
public:
    explicit Audio(const Assets& assets);

    void click() { start(0); }
    /// What happened, where it happened in the view.
    void play(const Event& event);

private:
    unsigned _picked = 0; ///< One after the other, each a little higher.
};
