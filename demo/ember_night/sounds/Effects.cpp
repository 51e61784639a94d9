#include "Effects.h"

#include "Pitch.h"

#include <cmath>

namespace {
constexpr int rate = 44100;

/// All notes of a chord at once, which is as loud as one note alone.
void addChord(Track& track, std::string_view chord, Tone tone, const Envelope& envelope, double start,
              double length, double loudness) {
    const auto notes = words(chord);
    for (const std::string_view note : notes) {
        tone.hertz = pitch(note);
        track.add(tone, envelope, start, length, loudness / std::sqrt(notes.size()));
    }
}
} // namespace

Track makeClick() {
    Track track(rate);
    track.add(Tone{{1300, 800}, Timbres::hollow}, {0.002, 0.02}, 0, 0.07, 1);
    track.add(Noise{3500}, {0.001, 0.004}, 0, 0.02, 0.5);
    return track;
}

Track makePick() {
    Track track(rate);
    track.add(Tone{pitch("E6"), Timbres::pluck}, {0.004, 0.08}, 0, 0.08, 1);
    track.add(Tone{pitch("B6"), Timbres::pluck}, {0.004, 0.07}, 0.08, 0.22, 1);
    return track;
}

Track makeFeed() {
    Track track(rate);
    track.add(Noise{{400, 2500}, 1.2}, {0.12, 0.6, 0, 0.25}, 0, 0.5, 2);
    addChord(track, "A3 E4 A4 C#5", {440, Timbres::pluck}, {0.06, 0.5, 0, 0.25}, 0.05, 0.5, 1);
    Random random;
    for (int crack = 0; crack < 22; ++crack) {
        const double start = random.between(0.1, 0.8), hertz = random.between(1500, 5000);
        track.add(Noise{hertz, 0.7}, {0.0005, 0.004, 0, 0.002}, start, 0.02, random.between(0.5, 1.2));
    }
    return track;
}

Track makeHop() {
    Track track(rate);
    track.add(Tone{{260, 620}, Timbres::hollow}, {0.01, 0.06, 0, 0.06}, 0, 0.14, 1);
    return track;
}

Track makeHurt() {
    Track track(rate);
    track.add(Tone{{520, 110}, Timbres::brass, 0.7, 17}, {0.005, 0.3, 0, 0.1}, 0, 0.32, 1);
    track.add(Noise{{1200, 300}}, {0.002, 0.05}, 0, 0.2, 0.8);
    return track;
}

Track makeBat() {
    Track track(rate);
    for (int flap = 0; flap < 5; ++flap)
        track.add(Noise{{900, 350}, 0.8}, {0.015, 0.04, 0, 0.02}, 0.075 * flap, 0.05, 2);
    track.add(Tone{{2600, 3400}, Timbres::flute, 0.5, 30}, {0.01, 1, 1, 0.03}, 0.1, 0.06, 0.6);
    track.add(Tone{{3300, 2500}, Timbres::flute, 0.5, 30}, {0.01, 1, 1, 0.05}, 0.24, 0.06, 0.6);
    return track;
}

Track makeDawn() {
    Track track(rate);
    const Envelope blown = {0.03, 0.3, 0.6, 0.1};
    const struct {
        const char* chord;
        double start, length;
    } fanfare[] = {{"A4", 0, 0.2},
                   {"A4 C#5", 0.25, 0.2},
                   {"A4 C#5 E5", 0.5, 0.4},
                   {"B4 D5 F#5", 1, 0.4},
                   {"A3 A4 C#5 E5 A5", 1.5, 0.95}};
    for (const auto& [chord, start, length] : fanfare)
        addChord(track, chord, {440, Timbres::brass, 0.15}, blown, start, length, 1);
    track.add(Noise{{3000, 7000}}, {0.3, 0.3, 0, 0.3}, 1.4, 1, 0.3);
    track.echo(0.15, 0.3, 2);
    return track;
}

Track makeDark() {
    Track track(rate);
    const Tone voices = {440, Timbres::pluck, 0.1, 4};
    addChord(track, "A2 C4 E4 A4", voices, {0.08, 0.4, 0.4, 0.3}, 0, 0.4, 1);
    addChord(track, "G2 Bb3 D4 G4", voices, {0.08, 0.4, 0.4, 0.3}, 0.55, 0.4, 1);
    addChord(track, "D2 A3 D4 F4", voices, {0.08, 0.5, 0, 0.6}, 1.1, 0.3, 1);
    track.add(Noise{{900, 150}}, {0.3, 0.5, 0, 0.6}, 0, 1.4, 0.6);
    return track;
}
