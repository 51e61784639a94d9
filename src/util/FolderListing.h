#pragma once

#include "platform/FileFacts.h"

#include <string>
#include <vector>

/// What is in a folder, for people to choose from.
struct _KXFolderListing {
    struct Entry {
        std::string name; ///< Its bytes as the system has them.
        bool isFolder;
        _KXFileFacts facts = {};
    };
    std::vector<Entry> entries; ///< In no order, see _KXSortListing().
    bool hasOthers = false;     ///< Whether something was left out.
    int error = 0;              ///< Why the folder could not be read, or not to its end; an errno.
};

/// Which files are listed. Folders always are, unless they are hidden.
struct _KXFileFilter {
    std::vector<std::string> extensions; ///< In lower case, without the dot; empty for every file.
    bool showsHidden = false;            ///< Names that begin with a dot.

    /// Extensions out of a list like "png, .jpg;*.tar.gz". Null is an empty one.
    static std::vector<std::string> extensionsIn(const char* list);
    /// Whether a file's name ends with one of the extensions, or every name does.
    bool matchesExtension(const std::string& name) const;
};

/// Reads a folder. What a symbolic link leads to counts; what is neither file nor folder is left out.
_KXFolderListing _KXReadFolder(const std::string& path, const _KXFileFilter& filter);

/// What a listing is sorted by. Folders stay first.
enum class _KXListingOrder { Name, Size, Changed };
/// Sorts entries: folders first, names in the order people expect. The largest and the latest are the first
/// ones, unless all is @a reversed.
void _KXSortListing(std::vector<_KXFolderListing::Entry>& entries, _KXListingOrder order, bool reversed);
/// What people read as a file's size, such as "12 B" and "3.4 MB", and as a time in their time zone.
std::string _KXSizeText(std::uint64_t bytes);
std::string _KXDateText(std::time_t time);

/// What is at a path.
enum class _KXPathKind { Nothing, File, Folder };
_KXPathKind _KXKindOf(const std::string& path);

/// A path below @a folder, or @a path itself if it is absolute.
std::string _KXPathIn(const std::string& folder, const std::string& path);
/// A path from the root without "." and "..", doubled slashes and one at the end. A null or empty path is the
/// working directory's.
std::string _KXAbsolutePath(const char* path);
/// The user's own folder, empty if it is not known or not there.
std::string _KXHomeFolder();
/// A name as it can be shown: with question marks for bytes that are no character and for control characters.
std::string _KXShownName(const std::string& name);
/// The last part of an absolute path, empty for the root; and what is before it, the root at last.
std::string _KXLastPart(const std::string& path);
std::string _KXParentOf(const std::string& path);
