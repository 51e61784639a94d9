#pragma once

#include "Assets.h"
#include "CommonOptions.h"
#include "Scene.h"
#include "Style.h"

/// What the scenes of each game need: the window, the assets, and the files that the player's things are kept
/// in.
struct CommonApp {
    /// Opens the window.
    explicit CommonApp(const char* title);
    ~CommonApp();
    CommonApp(const CommonApp&) = delete;
    CommonApp& operator=(const CommonApp&) = delete;

    /// Fills the window, makes it the target and has the scene draw; the caller swaps.
    void draw(Scene& scene);
    /// Writes what was drawn as a PNG file, or as a BMP file if the name says so.
    bool keepPicture(const std::string& path);
    /// The switch to fullscreen and back, which works in every scene.
    void stepSwitches();

    KXWindow window;
    Assets assets;
    KXActions actions;

protected:
    /// Makes everything ready.
    void begin(const CommonOptions& options);
    /// Keeps settings in a file and actions beside it, and reads those that were kept. An empty name keeps
    /// nothing.
    void keepIn(const std::string& settingsFile);
    void keepActions();
    const std::string& settingsFile() const { return _settingsFile; }

private:
    std::string _settingsFile; ///< Empty: nothing is kept.
    std::string _actionsFile;  ///< Beside it.
};
