#pragma once

#include <Kobaltrix/Kobaltrix.h>

/// All that changes while it is played.
struct Round {
    KXPoint firefly = {80, 180};
    KXPoint light = {440, 120};
    int score = 0;
    int stepsLeft = 60 * 60; ///< A minute.
};

/// A firefly in the dark, and the light it is after.
class Scene {
public:
    /// Needs a window. Throws std::runtime_error if a file is missing.
    Scene();

    /// One logic step. @param push where the player steers: -1 to 1 in each direction.
    void step(KXPoint push);
    /// @param best the best score so far.
    void draw(int best);

    const Round& round() const { return _round; }
    bool isOver() const { return _round.stepsLeft <= 0; }
    /// Begins a round, or goes on with one.
    void setRound(const Round& round);

    static const KXSize size;

private:
    bool touches(KXPoint point) const;

    KXSprite _firefly;
    Round _round;
};
