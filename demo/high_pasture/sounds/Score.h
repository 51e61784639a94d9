#pragma once

#include "Tune.h"

// Uphill in G major, in the morning.
constexpr Bar score[] = {
    {"G3 B3 D4", "G2 -- D3 -- G2 -- D3 --", "D5 -- B4 -- G4 -- B4 D5", "o.tst.st"},
    {"E3 G3 C4", "C3 -- G2 -- C3 -- G2 --", "E5 -- C5 -- G4 -- C5 --", "o.tst.st"},
    {"F#3 A3 D4", "D3 -- A2 -- D3 -- A2 --", "F#5 -- E5 D5 A4 -- D5 E5", "o.tst.st"},
    {"G3 B3 D4", "G2 -- D3 -- G2 -- D3 --", "D5 -- -- -- B4 -- .. ..", "o.tst.tt"},
    {"G3 B3 D4", "G2 -- D3 -- G2 -- B2 --", "G5 -- F#5 -- D5 -- B4 D5", "o.tst.st"},
    {"G3 B3 E4", "E3 -- B2 -- E3 -- B2 --", "E5 -- G5 -- E5 -- B4 --", "o.tst.st"},
    {"E3 A3 C4", "A2 -- E3 -- C3 -- E3 --", "C5 -- D5 -- E5 -- C5 A4", "o.tst.st"},
    {"F#3 A3 D4", "D3 -- A2 -- D3 -- F#2 --", "D5 -- C5 -- A4 -- F#4 --", "o.tst.tt"},
    {"E3 G3 C4", "C3 -- G2 -- C3 -- E3 --", "G5 -- -- -- E5 -- C5 --", "o..st.s."},
    {"G3 B3 D4", "G2 -- D3 -- B2 -- D3 --", "D5 -- -- -- B4 -- G4 --", "o..st.s."},
    {"F#3 A3 D4", "D3 -- A2 -- F#2 -- A2 --", "A4 -- D5 -- F#5 -- E5 D5", "o.tst.st"},
    {"G3 B3 D4", "G2 -- D3 -- G2 -- .. ..", "G4 -- -- -- -- -- .. ..", "o.tss..."},
};
