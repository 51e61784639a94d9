#pragma once

/// One bar of the tune. The bass, the lead and the drums have eight steps each.
struct Bar {
    const char* chord; ///< Its notes, held for the whole bar, and picked one after the other.
    const char* bass;  ///< Notes; "--" holds the one before, ".." is silence.
    const char* lead;
    const char* drums; ///< o a soft drum, s a brush, t a tick, . nothing.
};

// Night at the fire, in A minor.
constexpr Bar score[] = {
    {"A3 C4 E4", "A2 -- -- -- E2 -- -- --", "E5 -- -- -- D5 -- C5 --", "o.t.s.t."},
    {"A3 C4 F4", "F2 -- -- -- C3 -- -- --", "A4 -- -- -- -- -- C5 --", "o.t.s.t."},
    {"G3 C4 E4", "C3 -- -- -- G2 -- -- --", "G4 -- -- -- C5 -- D5 --", "o.t.s.t."},
    {"G3 B3 D4", "G2 -- -- -- D3 -- -- --", "B4 -- -- -- -- -- .. ..", "o.t.s.tt"},
    {"A3 C4 E4", "A2 -- -- -- E2 -- -- --", "C5 -- -- D5 E5 -- -- --", "o.t.s.t."},
    {"A3 C4 F4", "F2 -- -- -- C3 -- -- --", "A5 -- -- G5 F5 -- E5 --", "o.t.s.t."},
    {"A3 D4 F4", "D3 -- -- -- A2 -- -- --", "F5 -- -- E5 D5 -- -- --", "o.t.s.t."},
    {"G#3 B3 E4", "E2 -- -- -- B2 -- G#2 --", "E5 -- D5 -- B4 -- G#4 --", "o.t.s.st"},

    {"A3 C4 F4", "F2 -- -- F2 C3 -- -- --", "C5 -- -- -- A4 -- C5 --", "o.tos.t."},
    {"G3 B3 D4", "G2 -- -- G2 D3 -- -- --", "D5 -- -- -- B4 -- D5 --", "o.tos.t."},
    {"G3 C4 E4", "C3 -- -- C3 G2 -- -- --", "E5 -- -- D5 C5 -- G4 --", "o.tos.t."},
    {"A3 C4 E4", "A2 -- -- A2 E2 -- -- --", "A4 -- -- -- -- -- .. ..", "o.tos.tt"},
    {"A3 D4 F4", "D3 -- -- D3 A2 -- -- --", "F5 -- -- -- E5 -- D5 --", "o.tos.t."},
    {"A3 C4 E4", "A2 -- -- A2 E2 -- -- --", "E5 -- -- -- C5 -- A4 --", "o.tos.t."},
    {"B3 D4 F4", "B2 -- -- -- F2 -- -- --", "D5 -- -- C5 B4 -- -- --", "o.t.s.t."},
    {"G#3 B3 E4", "E2 -- -- -- -- -- -- --", "B4 -- -- -- G#4 -- -- --", "o.t.s..."},
};
