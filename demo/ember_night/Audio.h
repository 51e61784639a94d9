#pragma once

#include "CommonAudio.h"

enum class Effect { Click, Pick, Feed, Hop, Hurt, Bat, Dawn, Dark };

/// The night's sounds.
class Audio : public CommonAudio {
public:
    explicit Audio(const Assets& assets);

    void play(Effect effect) { start(static_cast<std::size_t>(effect)); }
    /// Plays an effect where it happens in the window.
    void play(Effect effect, KXPoint at);

private:
    unsigned _hops = 0;
};
