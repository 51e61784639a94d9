#pragma once

#include <string>

/// Draws every animation of a sprite file as a row of frames into a PNG file. Throws a Fault.
void previewSprite(const std::string& path, const std::string& output);
