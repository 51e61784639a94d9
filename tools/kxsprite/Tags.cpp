#include "Tags.h"

#include <algorithm>
#include <numeric>

namespace {
constexpr std::size_t mostFrames = 4096; // laid out for repeats: a minute of them, at 16 ms each

/// The way back from the last frame shown. The turning points are shown once, and a loop comes to its first
/// frame by itself.
void appendWayBack(std::vector<int>& shown, const std::vector<int>& way, bool loops) {
    shown.insert(shown.end(), way.rbegin() + 1, way.rend() - (loops ? 1 : 0));
}
} // namespace

TagOrder layOut(const Tag& tag, std::vector<std::string>& notes) {
    std::vector<int> way(static_cast<std::size_t>(tag.to - tag.from) + 1);
    std::iota(way.begin(), way.end(), tag.from);
    if (tag.direction == TagDirection::Reverse || tag.direction == TagDirection::PingPongReverse)
        std::reverse(way.begin(), way.end());
    const bool turns = way.size() > 1 && (tag.direction == TagDirection::PingPong ||
                                          tag.direction == TagDirection::PingPongReverse);
    TagOrder order = {-1, way};
    const auto repeats = static_cast<std::size_t>(tag.repeats);
    if (repeats > 1 && repeats > mostFrames / way.size())
        notes.push_back("tag " + quoted(tag.name) + " is played " + std::to_string(repeats) +
                        " times, which is too long to be written down; it loops");
    else if (repeats > 0)
        order.loops = 0;
    if (order.loops && turns)
        appendWayBack(order.frames, way, true);
    for (std::size_t pass = 1; !order.loops && pass < repeats; ++pass) {
        if (turns) {
            appendWayBack(order.frames, way, false);
            std::reverse(way.begin(), way.end());
        } else {
            order.frames.insert(order.frames.end(), way.begin(), way.end());
        }
    }
    return order;
}

std::int32_t stepsOf(std::int64_t milliseconds, int stepMilliseconds) {
    const std::int64_t nearest = (milliseconds + stepMilliseconds / 2) / stepMilliseconds;
    return static_cast<std::int32_t>(std::max<std::int64_t>(nearest, 1));
}
