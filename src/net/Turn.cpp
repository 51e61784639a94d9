#include "net/Turn.h"

#include "core/ground/LogicClock.h"

#include <algorithm>

void Turn::begin(const KXNetworkLimits& limits) {
    constexpr std::uint64_t longestPause = 1'000'000'000;
    const std::uint64_t clock = _KXWorldNanoseconds();
    if (_last != 0)
        _now += std::min(clock - _last, longestPause);
    _last = clock;
    _hasEnd = limits.turnMilliseconds >= 0;
    _end = clock + static_cast<std::uint64_t>(std::max(limits.turnMilliseconds, 0)) * 1'000'000;
    _messages = limits.turnMessages;
    _ids.clear();
    _next = _kept = 0;
    _asked = false;
}

int Turn::next() {
    if (_next == _ids.size()) {
        _ids.resize(_kept);
        _next = _kept = 0;
    }
    if (_ids.empty() || _messages == 0 || (_asked && _hasEnd && _KXWorldNanoseconds() >= _end))
        return -1;
    _asked = true;
    return _ids[_next];
}

void Turn::answered(bool message, bool more) {
    const int id = _ids[_next++];
    if (more)
        _ids[_kept++] = id;
    if (!message)
        return;
    _first = id + 1;
    if (_messages > 0)
        --_messages;
}
