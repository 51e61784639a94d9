#pragma once

#include <string>

/// What a preview shows, and how.
struct PreviewSettings {
    std::string output;        ///< A GIF file where it ends with .gif, else a PNG file.
    std::string animation;     ///< Its name; empty for all, of which a GIF file can show only one.
    int scale = 1;             ///< Pixels for each of the sheet's, from 1.
    int stepMilliseconds = 16; ///< How long a poll of a GIF file lasts.
};

/// Draws every animation of a sprite file as a row of frames, or one as it moves. Throws a Fault.
void previewSprite(const std::string& path, const PreviewSettings& settings);
