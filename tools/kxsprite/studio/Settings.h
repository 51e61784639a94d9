#pragma once

#include "ProjectText.h"

#include <string>
#include <vector>

/// What the studio remembers from one start to the next.
struct Settings {
    std::string theme = "dark";      ///< "dark", "light" or "contrast".
    std::vector<std::string> recent; ///< Files, the last one first.
    int width = 1100, height = 720;  ///< Of the window.
    float sheetShare = 0.5f;         ///< What the sheet has of the width that it shares with the stage.
    int stepMilliseconds = 16;       ///< Of one logic step of the game.
    bool showsGrid = true, showsPixels = true, showsOnion = false, showsFullSize = true, showsBoxes = true;
    std::uint32_t background = 0; ///< Of the stage, 0xRRGGBBAA; transparent for the checkerboard.

    bool operator==(const Settings&) const = default;
};

/// The folder of a user's settings; empty where the system names none.
std::string settingsFolder();

/// Reads the settings in a folder. What is missing, or makes no sense, is as at first.
Settings loadSettings(const std::string& folder);
/// Saves them, with a folder for them. Throws a Fault.
void saveSettings(const Settings& settings, const std::string& folder);
/// Puts a file at the front of the recent ones.
void noteRecent(Settings& settings, const std::string& path);

/// Work that was not saved, in a file of its own for each sprite: what a crash leaves.
class Recovery {
public:
    /// @param folder of the settings; empty to keep nothing.
    explicit Recovery(std::string folder) : _folder(std::move(folder)) {}

    /// Writes the work on a sprite. Throws a Fault.
    void keep(const std::string& sprite, const Project& project) const;
    /// It is saved, or not wanted any more.
    void forget(const std::string& sprite) const;
    /// What was left of a sprite, or of one that had no file yet; nothing where all was saved.
    std::optional<Project> find(const std::string& sprite) const;

private:
    std::string pathFor(const std::string& sprite) const;
    std::string pictureFor(const std::string& sprite) const;

    std::string _folder;
};
