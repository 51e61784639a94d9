#include "Settings.h"

#include "Paths.h"

#include <Kobaltrix/Kobaltrix.h>

#include <algorithm>
#include <cstdio>
#include <system_error>

static constexpr long lastOldVersion = 3;

int Settings::enterScore(const std::string& who, int points) {
    const auto place = std::find_if(scores.begin(), scores.end(),
                                    [points](const Score& score) { return score.points < points; });
    const auto index = static_cast<std::size_t>(place - scores.begin());
    if (points <= 0 || index >= mostScores)
        return -1;
    scores.insert(place, {who, points});
    scores.resize(std::min(scores.size(), mostScores));
    return static_cast<int>(index);
}

static std::string readString(FILE* file) {
    const char* const text = KXGetString(file);
    return text ? text : "";
}

// What the game wrote before its settings were a text. False if the file is none of these.
static bool loadOld(Settings& settings, const std::string& path) {
    FILE* const file = KXFileExists(path.c_str()) ? KXOpenFile(path.c_str(), "r") : nullptr;
    const long version = KXGetL(file);
    const bool isOld = version >= 1 && version <= lastOldVersion;
    if (isOld) {
        int sounds = static_cast<int>(KXGetL(file)), music = static_cast<int>(KXGetL(file));
        KXClampi(&sounds, 0, 128);
        KXClampi(&music, 0, 128);
        settings.soundVolume = sounds;
        settings.musicVolume = music;
        if (version == 1)
            KXGetL(file); // whether a pad steered, which the controls say now
        settings.shakes = version < 3 || KXGetL(file) != 0;
        settings.name = readString(file);
        const long count = KXGetL(file);
        for (long i = 0; i < count && i < static_cast<long>(Settings::mostScores) && !std::feof(file); ++i) {
            const std::string who = readString(file);
            settings.enterScore(who, static_cast<int>(KXGetL(file)));
        }
        if (!KXStreamIsIntact(file))
            KXLog("game", "%s was cut off", path.c_str());
    }
    if (file)
        std::fclose(file);
    return isOld;
}

void Settings::load(const std::string& path) {
    if (loadOld(*this, path)) {
        std::error_code ignored;
        std::filesystem::rename(pathOf(path), pathOf(path + ".old"), ignored);
        return save(path);
    }
    KXSettings file;
    if (file.load(path.c_str()) >= KXSettingsBroken)
        KXLog("game", "%s", KXError());
    soundVolume = file.integer("sounds", soundVolume, 0, 128);
    musicVolume = file.integer("music", musicVolume, 0, 128);
    shakes = file.flag("shakes", shakes) != 0;
    name = file.text("name", name.c_str());
    const std::vector<std::string> keepers = file.texts("best keepers");
    const std::vector<double> points = file.numbers("best points");
    for (std::size_t i = 0; i < std::min({keepers.size(), points.size(), mostScores}); ++i)
        enterScore(keepers[i], static_cast<int>(std::clamp(points[i], 0.0, 1e9)));
}

void Settings::save(const std::string& path) const {
    std::vector<std::string> keepers;
    std::vector<double> points;
    for (const Score& score : scores) {
        keepers.push_back(score.name);
        points.push_back(score.points);
    }
    KXSettings file;
    file.load(path.c_str()); // what another version knows stays
    file.setNumber("sounds", soundVolume);
    file.setNumber("music", musicVolume);
    file.setFlag("shakes", shakes);
    file.setText("name", name.c_str());
    file.setTexts("best keepers", keepers);
    file.setNumbers("best points", points);
    if (!file.save())
        KXLog("game", "%s", KXError());
}
