#include "Player.h"

#include <algorithm>
#include <cmath>

static int last(const Animation& animation) { return static_cast<int>(animation.frames.size()) - 1; }

void Player::play(const Animation& animation, int frame) {
    const bool isAtEnd = animation.loops == 0 && frame >= last(animation);
    show(isAtEnd ? 0 : frame);
    _isPlaying = last(animation) >= 0;
}

void Player::show(int frame) {
    _frame = std::max(0, frame);
    _ticks = 0;
    _owed = 0;
}

void Player::setSpeed(float factor) {
    if (std::isfinite(factor))
        _speed = std::clamp(factor, 0.125f, 4.0f);
}

bool Player::step(const Animation& animation) {
    if (!_isPlaying)
        return false;
    const int before = _frame;
    if (_frame > last(animation)) // some were deleted
        show(last(animation));
    for (_owed += _speed; _owed >= 1 && _isPlaying; _owed -= 1)
        _isPlaying = tick(animation);
    return _frame != before;
}

// Whether it goes on.
bool Player::tick(const Animation& animation) {
    const int end = last(animation);
    if (end < 0 || (animation.loops == 0 && _frame == end))
        return false;
    if (++_ticks < animation.frames[static_cast<std::size_t>(_frame)].duration)
        return true;
    _ticks = 0;
    _frame = _frame == end ? 0 : _frame + 1;
    return true;
}
