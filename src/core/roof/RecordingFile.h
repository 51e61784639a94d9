#pragma once

#include "util/RandomTrace.h"

#include <Kobaltrix/KXTypes.h>

#include <SDL_events.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What stands in a recording. docs/replay.md tells of it line by line.

inline constexpr std::string_view _KXRecordingFirstLine = "kobaltrix recording 1";

/// A line of a recording, taken apart. A line of answers is as many of these.
struct _KXRecordedItem {
    enum Kind : char { Begin, Answer, Text, Event, Step, Generator, End } kind;
    char question = 0;       ///< Of an answer.
    bool counts = false;     ///< Of an event.
    unsigned line = 0;       ///< Of the file, from 1.
    std::int64_t number = 0; ///< The answer, the step's number, the seed, or the place among events or texts.
    std::uint64_t hash = 0;  ///< Of random numbers.
};

/// A picture whose pixels are compared.
struct _KXRecordedPicture {
    std::uint64_t number; ///< Among all pictures, from 1.
    std::uint64_t hash;   ///< Of the pixels.
    std::string renderer; ///< What drew it.
    std::uint64_t where;  ///< The step behind which it was drawn, or the line that tells of it.
};

/// What was asked last, by question: recordings tell how much an answer is more than the last of its kind.
struct _KXLastAnswers {
    std::int64_t of[128] = {};
};

/// A recording that was read and found whole.
struct _KXReadRecording {
    std::vector<_KXRecordedItem> items;
    std::vector<SDL_Event> events;
    std::vector<std::string> texts; ///< Answers.
    std::vector<KXRandomState> generators;
    std::vector<_KXRecordedPicture> pictures;
    std::string program; ///< Which made it.
    KXSize largestWindow = KXZeroSize;
    unsigned lastWindow = 0; ///< Number of the last window that was made before it began.

    _KXReadRecording() = default;
    _KXReadRecording(const _KXReadRecording&) = delete;
    _KXReadRecording& operator=(const _KXReadRecording&) = delete;
    ~_KXReadRecording();
};

/// Reads one. False with a text in the error slot, which names the line.
bool _KXReadRecordingFile(const char* path, _KXReadRecording& recording);
