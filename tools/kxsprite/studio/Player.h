#pragma once

#include "../Document.h"

/// Shows the frames of an animation one after the other, as a game's sprite does: a frame stays for as many
/// steps as its duration says, for one where that is less, and an animation that does not loop holds its
/// last. The animation may change while it is played.
class Player {
public:
    bool isPlaying() const { return _isPlaying; }
    /// The frame on show.
    int frame() const { return _frame; }
    /// Begins with a frame. One that plays once begins anew where it would end at once.
    void play(const Animation& animation, int frame);
    void pause() { _isPlaying = false; }
    /// Goes on from a frame.
    void show(int frame);

    /// How fast: 1 as in a game, from 1/8 to 4.
    void setSpeed(float factor);
    float speed() const { return _speed; }

    /// One logic step. Pauses at the end of an animation that plays once. @return whether another frame is on
    /// show.
    bool step(const Animation& animation);

private:
    bool tick(const Animation& animation);

    bool _isPlaying = false;
    int _frame = 0;
    int _ticks = 0; ///< That the frame has been on show.
    float _speed = 1;
    float _owed = 0; ///< Parts of a step.
};
