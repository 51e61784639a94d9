#pragma once

#include "Document.h"
#include "Preview.h"

/// Writes an animation as an animated GIF file. Needs no display. Throws a Fault.
void previewMoving(const Animation& animation, const std::string& sheet, const PreviewSettings& settings);
