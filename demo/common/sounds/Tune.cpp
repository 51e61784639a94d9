#include "Tune.h"

#include "Pitch.h"

#include <string_view>

namespace {
constexpr int rate = 22050; // half of what is usual: a calm tune needs no more, and the file is small
constexpr int stepsInBar = 8;

struct Instrument {
    Timbre timbre;
    Envelope envelope;
    double loudness;
    double vibrato = 0;
};
constexpr Instrument pad = {Timbres::pad, {0.5, 1, 1, 0.7}, 0.1};
constexpr Instrument harp = {Timbres::pluck, {0.005, 0.22, 0, 0.3}, 0.16};
constexpr Instrument bass = {Timbres::bass, {0.02, 0.6, 0.2, 0.15}, 0.24};
constexpr Instrument lead = {Timbres::flute, {0.06, 0.8, 0.5, 0.2}, 0.32, 0.25};

void play(Track& track, const Instrument& instrument, std::string_view note, double start, double length) {
    track.add(Tone{pitch(note), instrument.timbre, instrument.vibrato}, instrument.envelope, start, length,
              instrument.loudness);
}

/// Plays one line of a bar, each note for as long as it is held.
void playLine(Track& track, const Instrument& instrument, std::string_view line, double start, double step) {
    const auto notes = words(line);
    for (std::size_t i = 0; i < notes.size(); ++i) {
        if (notes[i] == "--" || notes[i] == "..")
            continue;
        std::size_t end = i + 1;
        while (end < notes.size() && notes[end] == "--")
            ++end;
        play(track, instrument, notes[i], start + static_cast<double>(i) * step,
             static_cast<double>(end - i) * step);
    }
}

void playChord(Track& track, std::string_view chord, double start, double step) {
    const auto notes = words(chord);
    for (const std::string_view note : notes)
        play(track, pad, note, start, stepsInBar * step);
    constexpr int order[stepsInBar] = {0, 1, 2, 1, 0, 1, 2, 1};
    for (int i = 0; i < stepsInBar; ++i)
        play(track, harp, notes[order[i]], start + i * step, step);
}

void drum(Track& track, char kind, double start) {
    switch (kind) {
    case 'o':
        track.add(Tone{{95, 50}}, {0.005, 0.09}, start, 0.35, 0.5);
        break;
    case 's':
        track.add(Noise{2500, 1.4}, {0.02, 0.07}, start, 0.3, 0.22);
        break;
    case 't':
        track.add(Noise{6500, 0.8}, {0.004, 0.02}, start, 0.1, 0.12);
        break;
    default:
        break;
    }
}
} // namespace

Track makeTune(std::span<const Bar> score, double step) {
    Track melody(rate);
    double start = 0;
    for (const Bar& bar : score) {
        playChord(melody, bar.chord, start, step);
        playLine(melody, bass, bar.bass, start, step);
        playLine(melody, lead, bar.lead, start, step);
        double moment = start;
        for (const char kind : std::string_view(bar.drums)) {
            drum(melody, kind, moment);
            moment += step;
        }
        start += stepsInBar * step;
    }
    melody.echo(1.5 * step, 0.25, 3);
    melody.loop(start);
    return melody;
}
