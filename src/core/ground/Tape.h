#pragma once

#include <Kobaltrix/KXTypes.h>

#include <cstdint>
#include <string>

/// What the library asks the world outside its input for. The names stand in recordings.
enum class _KXQuestion : char {
    Ticks = 't',       ///< Of the millisecond counter.
    Nanoseconds = 'n', ///< Of the fine clock.
    TimeOfDay = 'd',   ///< Seconds.
    Event = 'e',       ///< Whether an event has ended a wait.
    Width = 'w',       ///< Of a window, in points.
    Height = 'h',
    Left = 'x', ///< Of a window or of the pointer on the desktop.
    Top = 'y',
    Display = 'v', ///< Its number, vertical sync.
    Focus = 'f',
    Fullscreen = 's',
    Density = 'o',  ///< Of a window, in thousandths of a pixel to a point.
    Pad = 'p',      ///< About a pad.
    Sound = 'a',    ///< About the mixer.
    Settings = 'k', ///< What a file of settings was found to be, and whether it was saved.
    Text = '"'      ///< Such as the clipboard's.
};

/// Keeps the world's answers while a run is recorded, and gives them again while it is replayed: so both runs
/// go by the same ones. It listens to the thread that runs the logic loop alone.
class _KXTape {
public:
    virtual bool replays() const = 0;
    virtual void keep(_KXQuestion question, std::int64_t answer) = 0;
    /// False when there is no answer any more, and no replay either.
    virtual bool give(_KXQuestion question, std::int64_t& answer) = 0;
    virtual void keepText(const char* answer) = 0;
    virtual bool giveText(std::string& answer) = 0;

    /// The largest window that is recorded, in points: one that is made without a display cannot grow later.
    virtual KXSize largestWindow() const = 0;

protected:
    constexpr _KXTape() = default;
    ~_KXTape() = default;
};

/// The tape that runs for this thread, null for none.
inline constinit thread_local _KXTape* _KXRunningTape = nullptr;

inline bool _KXIsReplaying() { return _KXRunningTape && _KXRunningTape->replays(); }

/// The answer to go by: the world's, which is kept if a tape records, or the one that was kept.
template<class Ask>
auto _KXAnswerTo(_KXQuestion question, Ask ask) {
    using Answer = decltype(ask());
    if (std::int64_t kept = 0; _KXIsReplaying() && _KXRunningTape->give(question, kept))
        return static_cast<Answer>(kept);
    const Answer answer = ask();
    if (_KXRunningTape)
        _KXRunningTape->keep(question, static_cast<std::int64_t>(answer));
    return answer;
}

/// The same for a text of the world's; null counts as empty.
inline std::string _KXTextAnswer(const char* world) {
    if (std::string kept; _KXIsReplaying() && _KXRunningTape->giveText(kept))
        return kept;
    if (_KXRunningTape)
        _KXRunningTape->keepText(world);
    return world ? world : "";
}
