#pragma once

#include "Project.h"

/// A sprite that was opened from a file.
struct OpenedProject {
    Project project;
    std::string sprite; ///< The sprite file that it is; empty for one that is still to be saved.
    std::string sheet;  ///< Where its sheet lies, empty for none.
    std::string note;   ///< What the user is to be told, empty for nothing.
};

/// Opens a sprite file, the JSON that kxsprite make takes, an .aseprite file, or a picture, which begins a
/// sprite. Throws a Fault.
OpenedProject openProject(const std::string& path);

/// Saves a sprite file, and beside it what only the studio knows. What is there stays if anything fails.
/// Throws a Fault.
/// @return what the user is to be told, empty for nothing.
std::string saveProject(const Project& project, const std::string& path);

/// The path of the file beside a sprite file.
std::string studioFileOf(const std::string& sprite);

/// Puts a text in the place of a file, whole or not at all. Throws a Fault.
void saveText(const std::string& path, const std::string& text);
