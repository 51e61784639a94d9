#pragma once

/// How loud a sound is from its start to its end. It starts and ends at nothing, with a round curve, so that
/// nothing clicks.
struct Envelope {
    double attack;          ///< Seconds until it is loudest.
    double halfLife;        ///< Seconds in which it falls half of the way to `sustain`.
    double sustain = 0;     ///< Where it falls to; 1 is the loudest.
    double release = 0.005; ///< Seconds of dying away, after the length of the sound.

    /// The loudness at a time. @param length of the sound without its release.
    double at(double seconds, double length) const;
};
