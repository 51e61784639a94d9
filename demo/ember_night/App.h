#pragma once

#include "Audio.h"
#include "CommonApp.h"
#include "Controls.h"
#include "Options.h"
#include "Settings.h"

/// What every scene needs: what each game has, sounds, and what the player has set.
struct App : CommonApp {
    explicit App(const Options& options);

    /// Applies and saves what the player has set.
    void settingsChanged();
    /// How long a night lasts.
    int secondsOfNight() const;

    Options options;
    Settings settings;
    Audio audio;
    int nightsEnded = 0;
};
