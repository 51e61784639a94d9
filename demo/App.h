#pragma once

#include "Assets.h"
#include "Audio.h"
#include "Controls.h"
#include "Options.h"
#include "Scene.h"
#include "Settings.h"
#include "Style.h"

/// What every scene needs: the window, the assets, sounds, and what the player has set.
struct App {
    explicit App(const Options& options);
    ~App();

    /// Fills the window, makes it the target and has the scene draw; the caller swaps.
    void draw(Scene& scene);
    /// Writes what was drawn as a PNG file, or as a BMP file if the name says so.
    bool keepPicture(const std::string& path);
    /// Applies and saves what the player has set.
    void settingsChanged();
    /// How long a night lasts.
    int secondsOfNight() const;
    /// The switch to fullscreen and back, which works in every scene.
    void stepSwitches();

    Options options;
    KXWindow window;
    Assets assets;
    Settings settings;
    KXActions actions = Controls::defaults();
    Audio audio;
    int nightsEnded = 0;

private:
    std::string _settingsFile; ///< Empty: nothing is kept.
    std::string _actionsFile;  ///< Beside it.
};
