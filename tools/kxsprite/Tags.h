#pragma once

#include "Document.h"

/// Which way a tag of Aseprite runs.
enum class TagDirection { Forward, Reverse, PingPong, PingPongReverse };

/// A range of frames that is an animation.
struct Tag {
    std::string name;
    int from = 0, to = 0; ///< Both included.
    TagDirection direction = TagDirection::Forward;
    int repeats = 0; ///< Passes, each way of a ping-pong counting as one; 0 for ever.
};

/// What is to be shown for a tag.
struct TagOrder {
    std::int32_t loops = -1; ///< As a sprite file has it.
    std::vector<int> frames; ///< Their numbers, in turn.
};

/// Lays a tag out: a sprite knows neither directions nor repeats, so that what is played n times is written
/// down n times, to be played once.
/// @param notes takes a line about a tag that would become too long that way, and loops instead.
TagOrder layOut(const Tag& tag, std::vector<std::string>& notes);

/// How many steps a frame is shown, at least one. @param milliseconds not negative.
std::int32_t stepsOf(std::int64_t milliseconds, int stepMilliseconds);
