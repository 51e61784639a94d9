#pragma once

#include <Kobaltrix/KXTypes.h>

#include <cmath>

/// Who draws: a graphics card, or the processor. What is fast for one costs with the other. A card likes few
/// large calls from its own memory; a driver that draws in software, calls that keep to its short ways.
enum class _KXDriver { Hardware, Software };

/// The driver of the context that is current. Each context tells once, when it is made.
inline constinit _KXDriver _KXCurrentDriver = _KXDriver::Hardware;

/// The driver that calls itself so.
_KXDriver _KXDriverNamed(const char* renderer);

/// Width and height of a quad together.
template<class Corner>
float _KXExtentOf(const Corner* corners) {
    const KXPoint from = corners[0].position, to = corners[2].position;
    return std::abs(to.x - from.x) + std::abs(to.y - from.y);
}

/// A driver that draws in software collects what is drawn, with a copy of all its state at each change of the
/// texture, and begins when it must: by then that is no longer in the processor's cache. So it is told to
/// begin every now and then; not for the sake of what is large, whose pixels weigh more than its corners.
class _KXDriverLoad {
public:
    template<class Corner>
    void addQuad(const Corner* corners) {
        constexpr float small = 16;
        _load += _KXExtentOf(corners) < small ? smallQuad : 1;
    }
    void addChange() { _load += stateCopy; }
    /// Has the driver begin if it has collected enough.
    void unloadIfFull() {
        if (_load >= full)
            unload();
    }

private:
    static constexpr int smallQuad = 16, stateCopy = 64 * smallQuad, full = 1024 * smallQuad;

    void unload();

    int _load = 0;
};

/// What the driver has collected.
inline constinit _KXDriverLoad _KXCollectedLoad;
