#pragma once

#include "core/ground/Tape.h"

#include <memory>
#include <string>

/// The switch of KXReloadChangedFiles().
inline constinit bool _KXReloadsFiles = false;

/// Whether changed files are loaded again now. Recordings do not hold what files do to a game.
inline bool _KXFollowsFiles() { return _KXReloadsFiles && !_KXRunningTape; }

/// Looks at the files that are followed, all at once and four times a second. Whether it did now.
bool _KXLookAtFiles();

/// A file that was loaded, and may change. All who follow one path share the looks at it.
class _KXFollowedFile {
public:
    /// Begins to follow a file, which is to be loaded now. Nothing else to what is followed already.
    void follow(const std::string& path);
    /// Whether it has changed and come to rest, once for each time; begins to follow it if need be.
    bool hasChanged(const std::string& path);

private:
    struct Watch;
    friend bool _KXLookAtFiles();

    std::shared_ptr<Watch> _watch;
    unsigned _changes = 0; // that were told
};
