#pragma once

#include "Scene.h"

/// What the game remembers from one time to the next: three files in the player's own folder, which people
/// can read. What is missing or broken counts as never written; what was broken is kept beside it.
class Memory {
public:
    Memory();

    bool fullscreen() const { return _settings.flag("full screen", 0) != 0; }
    void setFullscreen(bool on);
    /// The round that was left, or a new one.
    Round round() const;
    void keep(const Round& round);
    /// The best scores, the best first.
    std::vector<double> best() const { return _scores.numbers("best"); }
    void enterScore(int score);

private:
    KXSettings _settings, _saved, _scores;
};
