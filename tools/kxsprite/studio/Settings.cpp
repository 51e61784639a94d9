#include "Settings.h"

#include "../Files.h"
#include "../Paths.h"
#include "ProjectFile.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXPlaces.h>
#include <Kobaltrix/KXSettings.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {
constexpr std::size_t mostRecent = 8;

std::string pathIn(const std::string& folder, const char* name) { return textOf(pathOf(folder) / name); }

// Asked also where there is no folder, so that replays with one and without one ask the same.
void load(KXSettings& file, const std::string& folder) {
    file.load(folder.empty() ? nullptr : pathIn(folder, "settings.txt").c_str());
}

/// Each of those that are so or not, by its name.
template<typename Settings, typename Take>
void eachFlag(Settings& settings, Take take) {
    take("shows grid", settings.showsGrid);
    take("shows pixels", settings.showsPixels);
    take("shows onion skin", settings.showsOnion);
    take("shows full size", settings.showsFullSize);
    take("shows boxes", settings.showsBoxes);
}
} // namespace

std::string settingsFolder() {
    const char* const folder = KXUserFolder();
    return folder ? folder : "";
}

Settings loadSettings(const std::string& folder) {
    Settings settings;
    KXSettings file;
    load(file, folder);
    settings.theme = file.text("theme", "dark");
    settings.recent = file.texts("recent");
    settings.recent.resize(std::min(settings.recent.size(), mostRecent));
    settings.width = file.integer("width", settings.width, 940, 16384);
    settings.height = file.integer("height", settings.height, 560, 16384);
    settings.sheetShare = static_cast<float>(
        file.number("share of the sheet", static_cast<double>(settings.sheetShare), 0.1, 0.9));
    settings.stepMilliseconds = file.integer("milliseconds of a step", settings.stepMilliseconds, 1, 1000);
    settings.background = static_cast<std::uint32_t>(file.number("background", 0, 0, 0xFFFFFFFF));
    eachFlag(settings, [&](const char* name, bool& flag) { flag = file.flag(name, flag) != 0; });
    return settings;
}

void saveSettings(const Settings& settings, const std::string& folder) {
    if (folder.empty())
        return;
    KXSettings file;
    load(file, folder); // what others have written stays
    file.setText("theme", settings.theme.c_str());
    file.setTexts("recent", settings.recent);
    file.setNumber("width", settings.width);
    file.setNumber("height", settings.height);
    file.setNumber("share of the sheet", settings.sheetShare);
    file.setNumber("milliseconds of a step", settings.stepMilliseconds);
    file.setNumber("background", static_cast<double>(settings.background));
    eachFlag(settings, [&](const char* name, bool flag) { file.setFlag(name, flag); });
    std::error_code failed;
    fs::create_directories(pathOf(folder), failed); // if that fails, saving says why
    if (!file.save())
        throw Fault(KXError());
}

void noteRecent(Settings& settings, const std::string& path) {
    std::erase(settings.recent, path);
    settings.recent.insert(settings.recent.begin(), path);
    settings.recent.resize(std::min(settings.recent.size(), mostRecent));
}

std::string Recovery::pathFor(const std::string& sprite) const {
    std::uint64_t hash = 14695981039346656037u; // FNV-1a: the same in each run
    for (const char letter : sprite)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211u;
    char name[40];
    std::snprintf(name, sizeof name, "unsaved-%016llx.json", static_cast<unsigned long long>(hash));
    return pathIn(_folder, name);
}

std::string Recovery::pictureFor(const std::string& sprite) const { return pathFor(sprite) + ".png"; }

void Recovery::keep(const std::string& sprite, const Project& project) const {
    if (_folder.empty())
        return;
    std::error_code failed;
    fs::create_directories(pathOf(_folder), failed);
    saveText(pathFor(sprite), textOf({"recovery", sprite, project}));
    const std::string picture = pictureFor(sprite);
    if (!project.picture)
        fs::remove(pathOf(picture), failed);
    else if (!project.picture->image().writeToPNG(picture.c_str()))
        throw Fault(KXError(), picture);
}

void Recovery::forget(const std::string& sprite) const {
    std::error_code ignored;
    if (_folder.empty())
        return;
    fs::remove(pathOf(pathFor(sprite)), ignored);
    fs::remove(pathOf(pictureFor(sprite)), ignored);
}

std::optional<Project> Recovery::find(const std::string& sprite) const {
    std::error_code ignored;
    if (_folder.empty() || !fs::exists(pathOf(pathFor(sprite)), ignored))
        return std::nullopt;
    try {
        std::optional<ProjectText> kept = projectOfText(readFile(pathFor(sprite)));
        if (!kept || kept->what != "recovery" || kept->path != sprite)
            return std::nullopt;
        if (KXImage picture;
            fs::exists(pathOf(pictureFor(sprite)), ignored) && picture.load(pictureFor(sprite).c_str()))
            kept->project.picture.emplace(picture);
        return std::move(kept->project);
    } catch (const Fault&) { // cut off by the crash: there is nothing to be had of it
    }
    return std::nullopt;
}
