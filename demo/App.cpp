#include "App.h"

#include <cstdio>
#include <filesystem>
#include <new>
#include <system_error>

static std::string dataFolder() {
    const char* const folder = KXDataFolder();
    if (!folder)
        throw std::bad_alloc();
    return folder;
}

// In the player's folder, to which comes what was kept beside the program before. Empty: nothing is kept.
static std::string settingsFile() {
    const char* const file = KXUserPath("settings.txt");
    const std::filesystem::path path = file ? file : "", old = KXExecutablePath ? KXExecutablePath : ".";
    std::error_code ignored;
    if (!path.empty() && !std::filesystem::exists(path, ignored)) {
        std::filesystem::copy_file(old / "ember-night.save", path, ignored);
        std::filesystem::copy_file(old / "ember-night.controls",
                                   std::filesystem::path(path).replace_extension(".controls"), ignored);
    }
    return path.string();
}

App::App(const Options& wanted)
    : options(wanted), window("Ember Night", Style::windowSize, -1), assets(dataFolder()), audio(assets),
      _settingsFile(options.save.empty() && options.keepsSettings() ? settingsFile() : options.save) {
    KXInitializeLog("ember-night.log", 0);
    window.setLogicalSize({Style::windowSize, KXScalingLetterbox, Style::ink}); // however large the window is
    window.setRenderContext();
    if (!KXFileExists(assets.path("font.ttf"))) {
        std::fprintf(stderr,
                     "play: there is no font; install the package fonts-dejavu-core and build again\n");
        throw std::bad_alloc();
    }
    KXUISetGlobalFont(assets.path("font.ttf"), KXAliasModeTexture, Style::fontSize, {0, 2});
    Style::prepareWidgets();
    if (!KXInitPads())
        KXLog("game", "no pads: %s", KXError());
    if (!_settingsFile.empty()) {
        _actionsFile = std::filesystem::path(_settingsFile).replace_extension(".controls").string();
        settings.load(_settingsFile);
        if (KXFileExists(_actionsFile.c_str()) && !actions.load(_actionsFile.c_str()))
            KXLog("game", "%s", KXError());
    }
    audio.setVolumes(settings.soundVolume, settings.musicVolume);
    KXBeginDrawBatch(); // all that is drawn leaves in a few calls, frame after frame
}

int App::secondsOfNight() const {
    constexpr int usual = 90;
    return options.night ? options.night : usual;
}

App::~App() {
    KXEndDrawBatch();
    KXDeinitializeLog();
}

void App::settingsChanged() {
    audio.setVolumes(settings.soundVolume, settings.musicVolume);
    if (_settingsFile.empty())
        return;
    settings.save(_settingsFile);
    if (!actions.save(_actionsFile.c_str()))
        KXLog("game", "%s", KXError());
}

void App::stepSwitches() {
    if (KXUIFocusedTextEntry() || !actions.wentDown(Controls::fullscreen))
        return;
    if (!window.setFullscreen(window.isFullscreen() ? KXFullscreenOff : KXFullscreenBorderless))
        KXLog("game", "%s", KXError());
}

void App::draw(Scene& scene) {
    window.setRenderContext();
    KXClear(Style::night);
    scene.draw();
    KXUIDrawTooltip();
}

bool App::keepPicture(const std::string& path) {
    int kept = 0;
    if (path.ends_with(".bmp")) {
        kept = window.saveBuffer(path.c_str(), 0);
    } else if (const std::unique_ptr<KXTexture> copy{window.copyTexture()}) {
        kept = copy->writeToPNG(path.c_str());
    }
    if (kept)
        std::printf("Screenshot: %s\n", std::filesystem::absolute(path).c_str());
    else
        std::fprintf(stderr, "play: %s\n", KXError());
    return kept != 0;
}
