#pragma once

#include <cstdint>

/// The keys of a widget that has the keyboard, with the delayed repeat of the game's own keys. It has a time
/// of its own, since the game may be reading the same key.
class _KXWidgetKeys {
public:
    /// For a widget that is given the keyboard: keys that are down now were meant for something else. Only
    /// the widgets' own record of them changes, not the time that the game's repeats go by.
    void begin();
    /// Whether a press was not seen yet and, if the key @a repeats, for each step from the 30th after that
    /// on.
    bool reports(int key, bool repeats);

private:
    int _repeatingKey = 0;
    std::int32_t _repeatTime = 0; // logic time (ms) of the report
};
