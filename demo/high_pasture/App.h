#pragma once

#include "Audio.h"
#include "CommonApp.h"
#include "Controls.h"
#include "Options.h"
#include "Progress.h"

/// What every scene needs: what each game has, sounds, and what the player has set and done.
struct App : CommonApp {
    explicit App(const Options& options);

    /// Applies and saves what the player has set and done.
    void progressChanged();

    Options options;
    Progress progress;
    Audio audio;
};
