#include "CommonApp.h"

#include "MenuControls.h"
#include "Paths.h"

#include <cstdio>
#include <new>

static std::string dataFolder() {
    const char* const folder = KXDataFolder();
    if (!folder)
        throw std::bad_alloc();
    return folder;
}

CommonApp::CommonApp(const char* title) : window(title, Style::windowSize, -1), assets(dataFolder()) {}

void CommonApp::begin(const CommonOptions& options) {
    // What the game tells of itself lies with the player's things: where it is installed it may not write.
    if (options.keepsSettings())
        KXOpenLog(KXUserPath("log.txt"), 0);
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
    KXBeginDrawBatch(); // all that is drawn leaves in a few calls, frame after frame
}

CommonApp::~CommonApp() {
    KXEndDrawBatch();
    KXDeinitializeLog();
}

void CommonApp::keepIn(const std::string& settingsFile) {
    _settingsFile = settingsFile;
    if (_settingsFile.empty())
        return;
    _actionsFile = textOf(pathOf(_settingsFile).replace_extension(".controls"));
    if (KXFileExists(_actionsFile.c_str()) && !actions.load(_actionsFile.c_str()))
        KXLog("game", "%s", KXError());
}

void CommonApp::keepActions() {
    if (!_actionsFile.empty() && !actions.save(_actionsFile.c_str()))
        KXLog("game", "%s", KXError());
}

void CommonApp::stepSwitches() {
    if (KXUIFocusedTextEntry() || !actions.wentDown(Controls::fullscreen))
        return;
    if (!window.setFullscreen(window.isFullscreen() ? KXFullscreenOff : KXFullscreenBorderless))
        KXLog("game", "%s", KXError());
}

void CommonApp::draw(Scene& scene) {
    window.setRenderContext();
    KXClear(Style::night);
    scene.draw();
    KXUIDrawTooltip();
}

bool CommonApp::keepPicture(const std::string& path) {
    int kept = 0;
    if (path.ends_with(".bmp")) {
        kept = window.saveBuffer(path.c_str(), 0);
    } else if (const std::unique_ptr<KXTexture> copy{window.copyTexture()}) {
        kept = copy->writeToPNG(path.c_str());
    }
    if (kept)
        std::printf("Screenshot: %s\n", textOf(std::filesystem::absolute(pathOf(path))).c_str());
    else
        std::fprintf(stderr, "play: %s\n", KXError());
    return kept != 0;
}
