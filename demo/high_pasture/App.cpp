#include "App.h"

static std::string usualFile() {
    const char* const file = KXUserPath("progress.txt");
    return file ? file : "";
}

App::App(const Options& wanted) : CommonApp("High Pasture"), options(wanted), audio(assets) {
    begin(options);
    actions = Controls::defaults();
    keepIn(options.save.empty() && options.keepsSettings() ? usualFile() : options.save);
    if (!settingsFile().empty())
        progress.load(settingsFile());
    audio.setVolumes(progress.soundVolume, progress.musicVolume);
}

void App::progressChanged() {
    audio.setVolumes(progress.soundVolume, progress.musicVolume);
    if (!settingsFile().empty())
        progress.save(settingsFile());
    keepActions();
}
