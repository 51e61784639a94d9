#include "Progress.h"

#include <algorithm>

static constexpr int longest = 100 * 60 * 60 * 60; // steps: a hundred hours

void Progress::load(const std::string& path) {
    KXSettings file;
    if (file.load(path.c_str()) >= KXSettingsBroken)
        KXLog("game", "%s", KXError());
    soundVolume = file.integer("sounds", soundVolume, 0, 128);
    musicVolume = file.integer("music", musicVolume, 0, 128);
    open = file.integer("open levels", open, 1, Stage::count);
    const std::vector<double> times = file.numbers("best steps"), flowers = file.numbers("most flowers");
    const auto at = [](const std::vector<double>& numbers, std::size_t i) {
        return i < numbers.size() ? static_cast<int>(std::clamp(numbers[i], 0.0, double{longest})) : 0;
    };
    for (std::size_t i = 0; i < best.size(); ++i)
        best[i] = {at(times, i), at(flowers, i)};
}

void Progress::save(const std::string& path) const {
    KXSettings file;
    if (file.load(path.c_str()) >= KXSettingsBroken)
        KXLog("game", "%s", KXError());
    std::vector<double> times, flowers;
    for (const Best& level : best) {
        times.push_back(level.steps);
        flowers.push_back(level.flowers);
    }
    file.setNumber("sounds", soundVolume);
    file.setNumber("music", musicVolume);
    file.setNumber("open levels", open);
    file.setNumbers("best steps", times);
    file.setNumbers("most flowers", flowers);
    if (!file.save())
        KXLog("game", "%s", KXError());
}

bool Progress::enter(int level, int steps, int flowers) {
    Best& known = best[static_cast<std::size_t>(level)];
    const bool faster = known.steps == 0 || steps < known.steps;
    if (faster)
        known.steps = std::min(steps, longest);
    known.flowers = std::max(known.flowers, flowers);
    open = std::clamp(level + 2, open, Stage::count);
    return faster;
}

std::string timeText(int steps) {
    const int hundredths = steps % 60 * 100 / 60, seconds = steps / 60;
    return KXTempString("%d:%02d.%02d", seconds / 60, seconds % 60, hundredths);
}
