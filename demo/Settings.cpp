#include "Settings.h"

#include <Kobaltrix/Kobaltrix.h>

#include <algorithm>
#include <cstdio>

static constexpr long fileVersion = 3;

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

void Settings::load(const std::string& path) {
    FILE* const file = KXFileExists(path.c_str()) ? std::fopen(path.c_str(), "r") : nullptr;
    if (!file)
        return;
    const long version = KXGetL(file);
    if (version >= 1 && version <= fileVersion) {
        int sounds = static_cast<int>(KXGetL(file)), music = static_cast<int>(KXGetL(file));
        KXClampi(&sounds, 0, 128);
        KXClampi(&music, 0, 128);
        soundVolume = sounds;
        musicVolume = music;
        if (version == 1)
            KXGetL(file); // whether a pad steered, which the controls say now
        shakes = version < 3 || KXGetL(file) != 0;
        name = readString(file);
        const long count = KXGetL(file);
        for (long i = 0; i < count && i < static_cast<long>(mostScores) && !std::feof(file); ++i) {
            const std::string who = readString(file);
            enterScore(who, static_cast<int>(KXGetL(file)));
        }
    }
    if (!KXStreamIsIntact(file))
        KXLog("game", "%s was cut off", path.c_str());
    std::fclose(file);
}

void Settings::save(const std::string& path) const {
    KXSaveFile saved(path.c_str());
    FILE* const file = saved.stream();
    for (long value :
         {fileVersion, static_cast<long>(soundVolume), static_cast<long>(musicVolume), long{shakes}})
        KXPutL(value, file);
    KXPutString(name.c_str(), file);
    KXPutL(static_cast<long>(scores.size()), file);
    for (const Score& score : scores) {
        KXPutString(score.name.c_str(), file);
        KXPutL(score.points, file);
    }
    if (!saved.commit())
        KXLog("game", "%s", KXError());
}
