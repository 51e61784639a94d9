#include "App.h"

#include "Paths.h"

#include <system_error>

// In the player's folder, to which comes what was kept beside the program before. Empty: nothing is kept.
static std::string usualSettingsFile() {
    const char* const file = KXUserPath("settings.txt");
    const std::filesystem::path path = pathOf(file ? file : ""),
                                old = pathOf(KXExecutablePath ? KXExecutablePath : ".");
    std::error_code ignored;
    if (!path.empty() && !std::filesystem::exists(path, ignored)) {
        std::filesystem::copy_file(old / "ember-night.save", path, ignored);
        std::filesystem::copy_file(old / "ember-night.controls",
                                   std::filesystem::path(path).replace_extension(".controls"), ignored);
    }
    return textOf(path);
}

App::App(const Options& wanted) : CommonApp("Ember Night"), options(wanted), audio(assets) {
    begin(options);
    actions = Controls::defaults();
    keepIn(options.save.empty() && options.keepsSettings() ? usualSettingsFile() : options.save);
    if (!settingsFile().empty())
        settings.load(settingsFile());
    audio.setVolumes(settings.soundVolume, settings.musicVolume);
}

int App::secondsOfNight() const {
    constexpr int usual = 90;
    return options.night ? options.night : usual;
}

void App::settingsChanged() {
    audio.setVolumes(settings.soundVolume, settings.musicVolume);
    if (!settingsFile().empty())
        settings.save(settingsFile());
    keepActions();
}
