#include "Memory.h"

#include <algorithm>
#include <cstdio>
#include <functional>

static void load(KXSettings& file, const char* name) {
    const KXSettingsState found = file.load(KXUserPath(name));
    if (found == KXSettingsBroken || found == KXSettingsUnreadable)
        std::fprintf(stderr, "my_game: %s\n", KXError());
}

static void save(KXSettings& file) {
    file.setNumber("version", 1); // for a later version of the game that keeps something in another way
    if (!file.save())
        std::fprintf(stderr, "my_game: %s\n", KXError());
}

Memory::Memory() {
    load(_settings, "settings.txt");
    load(_saved, "saved_game.txt");
    load(_scores, "scores.txt");
}

void Memory::setFullscreen(bool on) {
    _settings.setFlag("full screen", on);
    save(_settings);
}

// Anybody may have written into the file, so each value has its limits.
Round Memory::round() const {
    const Round fresh;
    Round round;
    round.firefly = _saved.point("firefly", fresh.firefly);
    round.light = _saved.point("light", fresh.light);
    round.score = _saved.integer("score", fresh.score, 0, 999);
    round.stepsLeft = _saved.integer("steps left", fresh.stepsLeft, 1, fresh.stepsLeft);
    return round;
}

void Memory::keep(const Round& round) {
    _saved.setPoint("firefly", round.firefly);
    _saved.setPoint("light", round.light);
    _saved.setNumber("score", round.score);
    _saved.setNumber("steps left", round.stepsLeft);
    save(_saved);
}

void Memory::enterScore(int score) {
    const std::size_t most = 5;
    std::vector<double> scores = best();
    scores.push_back(score);
    std::sort(scores.begin(), scores.end(), std::greater<double>());
    scores.resize(std::min(scores.size(), most));
    _scores.setNumbers("best", scores);
    save(_scores);
}
