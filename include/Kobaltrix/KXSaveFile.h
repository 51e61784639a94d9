#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdio.h>

#include <memory>

/// @file
/// Files that are saved whole or not at all: progress, scores, settings, levels.
///
/// A file that is opened for writing is empty from then on, and holds a part of what it should if the disk is
/// full or the game falls meanwhile. Here it keeps what it held until all that is new is on the disk.

/// A file that is being saved. What is put on its stream waits in memory, and commit() makes a file of it.
///
/// Objects are made, used and deleted on one thread.
class KX_API KXSaveFile {
public:
    /// Nothing happens to a file at @a path before commit(). Throws std::bad_alloc if memory is exhausted.
    explicit KXSaveFile(const char* path);
    /// Forgets what was put on the stream, unless commit() was called.
    ~KXSaveFile();
    KXSaveFile(const KXSaveFile&) = delete;
    KXSaveFile& operator=(const KXSaveFile&) = delete;

    /// What KXPutL() and its kind, fprintf() and fwrite() write to. It belongs to the object: never close it.
    /// Null after commit().
    FILE* stream() const;

    /// Puts what is on the stream in the place of the file, or makes the file if there was none; once. It is
    /// on the disk when this returns, which may take as long as a frame or some.
    ///
    /// Permissions stay as they were, and so does a symbolic link: the file changes that it leads to. What is
    /// no file (a pipe, a device) is written to as it is.
    /// @return -1 on success. 0 on failure, with a text in KXError(): the file is what it was, or still not
    ///   there.
    int commit();

private:
    struct KX_INTERNAL State;
    std::unique_ptr<State> _state;
};

/// Gives a file that cannot be used another name, so that nothing is lost when a new one takes its place: the
/// same with ".broken" behind it, or ".broken-2" and so on, which never was the name of another file.
/// @return the new path, a temporary string of any length; null with a text in KXError() if there is no file
///   at @a path, or it cannot be renamed.
KX_API const char* KXPutFileAside(const char* path);
