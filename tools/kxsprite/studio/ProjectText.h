#pragma once

#include "Project.h"

#include <optional>

// A project as text: on the clipboard, in the file to recover from, and, for what a sprite file cannot say,
// in the file beside it.

/// A project that was read, and what it was written for.
struct ProjectText {
    std::string what; ///< "animation", "frames" or "boxes" on the clipboard, "recovery" in a file.
    std::string path; ///< Of the sprite file that it belongs to, empty for none.
    Project project;
};

std::string textOf(const ProjectText& text);
/// Nothing where the text is something else altogether; a Fault where it is damaged.
std::optional<ProjectText> projectOfText(const std::string& text);

/// What the studio knows of a sprite beside what its file says: the order of the lists, animations that have
/// no frames yet, the colours of boxes, the grid.
std::string studioTextOf(const Project& project);
/// Puts that into a project. Names that it has no more are passed over, those that are new come last. Throws
/// a Fault, with nothing changed.
void applyStudioText(Project& project, const std::string& text);
