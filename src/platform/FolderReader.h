#pragma once

#include <memory>

/// Reads the names in a folder one by one. The standard library's own way ends the program where memory runs
/// out.
class _KXFolderReader {
public:
    explicit _KXFolderReader(const char* path);
    ~_KXFolderReader();
    _KXFolderReader(const _KXFolderReader&) = delete;
    _KXFolderReader& operator=(const _KXFolderReader&) = delete;

    /// The next name, in no order, "." and ".." left out; null at the end, or where reading fails. It holds
    /// until the next call.
    const char* next();
    /// 0, or why the folder could not be opened or read to its end: ENOENT and its kind.
    int error() const { return _error; }

private:
    struct Folder;
    struct Close {
        void operator()(Folder* folder) const;
    };

    std::unique_ptr<Folder, Close> _folder;
    int _error;
};
