#include "Settings.h"

#include "../Files.h"
#include "../Json.h"
#include "ProjectFile.h"

#include <Kobaltrix/KXError.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>

namespace fs = std::filesystem;

namespace {
constexpr std::size_t mostRecent = 8;

std::string pathIn(const std::string& folder, const char* name) { return (fs::path(folder) / name).string(); }

std::string fromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value && *value == '/' ? value : "";
}

/// Each of them by its name, for reading and for writing.
template<typename Settings, typename Take>
void eachSetting(Settings& settings, Take take) {
    take("theme", settings.theme);
    take("recent", settings.recent);
    take("width", settings.width);
    take("height", settings.height);
    take("sheetShare", settings.sheetShare);
    take("stepMilliseconds", settings.stepMilliseconds);
    take("showsGrid", settings.showsGrid);
    take("showsPixels", settings.showsPixels);
    take("showsOnion", settings.showsOnion);
    take("showsFullSize", settings.showsFullSize);
    take("showsBoxes", settings.showsBoxes);
    take("background", settings.background);
}

Settings sane(Settings settings) {
    settings.width = std::clamp(settings.width, 940, 16384);
    settings.height = std::clamp(settings.height, 560, 16384);
    settings.sheetShare = std::clamp(settings.sheetShare, 0.1f, 0.9f);
    settings.stepMilliseconds = std::clamp(settings.stepMilliseconds, 1, 1000);
    settings.recent.resize(std::min(settings.recent.size(), mostRecent));
    return settings;
}
} // namespace

std::string settingsFolder() {
#ifdef __APPLE__
    const std::string home = fromEnvironment("HOME"),
                      base = home.empty() ? "" : home + "/Library/Application Support";
#else
    const std::string home = fromEnvironment("HOME"), config = fromEnvironment("XDG_CONFIG_HOME"),
                      base = !config.empty() ? config
                             : home.empty()  ? ""
                                             : home + "/.config";
#endif
    return base.empty() ? "" : base + "/kxsprite";
}

Settings loadSettings(const std::string& folder) {
    Settings settings;
    std::error_code ignored;
    const std::string path = pathIn(folder, "settings.json");
    if (folder.empty() || !fs::exists(path, ignored))
        return settings;
    try {
        const JsonTree json = JsonTree::parse(readFile(path), nullptr, false);
        eachSetting(settings, [&](const char* name, auto& setting) {
            try {
                if (json.is_object() && json.contains(name))
                    setting = json[name].template get<std::decay_t<decltype(setting)>>();
            } catch (const JsonTree::exception&) { // of another kind: as at first
            }
        });
    } catch (const Fault&) { // the next save puts another in its place
    }
    return sane(settings);
}

void saveSettings(const Settings& settings, const std::string& folder) {
    if (folder.empty())
        return;
    JsonTree json;
    eachSetting(settings, [&](const char* name, const auto& setting) { json[name] = setting; });
    std::error_code failed;
    fs::create_directories(folder, failed); // if that fails, saving says why
    saveText(pathIn(folder, "settings.json"),
             json.dump(2, ' ', false, JsonTree::error_handler_t::replace) + "\n");
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
    fs::create_directories(_folder, failed);
    saveText(pathFor(sprite), textOf({"recovery", sprite, project}));
    const std::string picture = pictureFor(sprite);
    if (!project.picture)
        fs::remove(picture, failed);
    else if (!project.picture->image().writeToPNG(picture.c_str()))
        throw Fault(KXError(), picture);
}

void Recovery::forget(const std::string& sprite) const {
    std::error_code ignored;
    if (_folder.empty())
        return;
    fs::remove(pathFor(sprite), ignored);
    fs::remove(pictureFor(sprite), ignored);
}

std::optional<Project> Recovery::find(const std::string& sprite) const {
    std::error_code ignored;
    if (_folder.empty() || !fs::exists(pathFor(sprite), ignored))
        return std::nullopt;
    try {
        std::optional<ProjectText> kept = projectOfText(readFile(pathFor(sprite)));
        if (!kept || kept->what != "recovery" || kept->path != sprite)
            return std::nullopt;
        if (KXImage picture;
            fs::exists(pictureFor(sprite), ignored) && picture.load(pictureFor(sprite).c_str()))
            kept->project.picture.emplace(picture);
        return std::move(kept->project);
    } catch (const Fault&) { // cut off by the crash: there is nothing to be had of it
    }
    return std::nullopt;
}
