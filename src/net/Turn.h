#pragma once

#include <Kobaltrix/KXNetworkLimits.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// A turn of receiving, from one poll to the next: who is asked for a message now, and until when.
///
/// Those who take part are asked for one message each, round after round; who has none is not asked again in
/// this turn. The next turn goes on behind whoever was heard last, so a turn that is cut short starves
/// nobody.
class Turn {
public:
    void begin(const KXNetworkLimits& limits);
    /// Lets an id take part. They are asked in the order in which they were added.
    void add(int id) { _ids.push_back(id); }

    /// Whose turn it is; -1 if nobody has more or the bounds are reached.
    int next();
    /// What came of asking. @param more whether it is to be asked again.
    void answered(bool message, bool more);

    /// The id behind the one that was heard last.
    int first() const { return _first; }
    /// The time that has passed in milliseconds. A long pause between two turns counts as a second: nobody
    /// is to be blamed for a silence in which the game did not listen.
    std::uint64_t now() const { return _now / 1'000'000; }

private:
    std::uint64_t _now = 0;  // nanoseconds
    std::uint64_t _last = 0; // the clock at the last beginning; 0 before the first
    std::uint64_t _end = 0;
    bool _hasEnd = false;
    int _messages = 0;     // that may still be handed out; negative: any number
    std::vector<int> _ids; // those of this round from _next on, those of the next round before _kept
    std::size_t _next = 0;
    std::size_t _kept = 0;
    bool _asked = false; // anybody
    int _first = 0;
};
