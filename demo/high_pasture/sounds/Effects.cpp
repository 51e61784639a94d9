#include "Effects.h"

#include "Pitch.h"

#include <cmath>

static constexpr int rate = 44100;

Track makeClick() {
    Track track(rate);
    track.add(Tone{{900, 700}, Timbres::pluck}, {0.002, 0.02}, 0, 0.07, 1);
    return track;
}

Track makeJump() {
    Track track(rate);
    track.add(Tone{{330, 720}, Timbres::flute}, {0.008, 0.06, 0, 0.05}, 0, 0.15, 1);
    track.add(Noise{{700, 1800}, 1.2}, {0.004, 0.03}, 0, 0.1, 0.25);
    return track;
}

Track makeLand() {
    Track track(rate);
    track.add(Tone{{150, 80}}, {0.003, 0.04}, 0, 0.1, 1);
    track.add(Noise{{900, 400}, 1.4}, {0.002, 0.02}, 0, 0.07, 0.5);
    return track;
}

Track makePick() {
    Track track(rate);
    track.add(Tone{pitch("G5"), Timbres::pluck}, {0.003, 0.06}, 0, 0.07, 1);
    track.add(Tone{pitch("D6"), Timbres::pluck}, {0.003, 0.08, 0, 0.1}, 0.06, 0.2, 1);
    return track;
}

Track makeStomp() {
    Track track(rate);
    track.add(Tone{{420, 130}, Timbres::hollow}, {0.003, 0.06, 0, 0.05}, 0, 0.16, 1);
    track.add(Noise{{2600, 600}, 1}, {0.002, 0.03}, 0, 0.1, 0.7);
    return track;
}

Track makeTumble() {
    Track track(rate);
    // A bleat that goes down.
    track.add(Tone{{620, 240}, Timbres::brass, 1.1, 14}, {0.02, 0.4, 0.2, 0.12}, 0, 0.5, 1);
    return track;
}

Track makeBell() {
    // A bell's partials are no multiples of its tone, and the higher ones die sooner.
    Track track(rate);
    const double tone = pitch("E5");
    const struct {
        double ratio, loudness, halfLife;
    } partials[] = {{0.5, 0.5, 0.5},   {1, 1, 0.4},    {1.19, 0.5, 0.3},
                    {1.5, 0.35, 0.24}, {2, 0.6, 0.18}, {2.74, 0.3, 0.1}};
    for (const double start : {0.0, 0.32})
        for (const auto& [ratio, loudness, halfLife] : partials)
            track.add(Tone{tone * ratio}, {0.002, halfLife, 0, 0.3}, start, 1.2, loudness);
    return track;
}

Track makeHome() {
    Track track(rate);
    const char* const notes[] = {"C5", "E5", "G5", "C6", "G5", "C6", "E6"};
    double start = 0;
    for (const char* const note : notes) {
        track.add(Tone{pitch(note), Timbres::flute, 0.1}, {0.01, 0.2, 0.3, 0.15}, start, 0.16, 1);
        start += 0.15;
    }
    for (const char* const note : {"C4", "E4", "G4", "C5"})
        track.add(Tone{pitch(note), Timbres::pad}, {0.05, 0.8, 0, 0.4}, start, 0.8, 0.6);
    track.echo(0.18, 0.3, 2);
    return track;
}
