#include "util/FolderListing.h"

#include "platform/FolderReader.h"
#include "util/TextOrder.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

namespace fs = std::filesystem;

namespace {
struct SortedEntry {
    std::string key;
    _KXFolderListing::Entry entry;

    // The bytes last: two names that differ in case only keep an order.
    auto rank() const { return std::tie(key, entry.name); }
};

// A link that leads nowhere is a name that is taken, so it is listed, as a file.
fs::file_type typeOf(const fs::path& entry) {
    std::error_code error;
    const fs::file_type type = fs::status(entry, error).type();
    return error || type == fs::file_type::not_found ? fs::file_type::regular : type;
}

bool isListed(const _KXFileFilter& filter, const std::string& name, fs::file_type type) {
    if (name[0] == '.' && !filter.showsHidden)
        return false;
    return type == fs::file_type::directory ||
           (type == fs::file_type::regular && filter.matchesExtension(name));
}
} // namespace

std::vector<std::string> _KXFileFilter::extensionsIn(const char* list) {
    std::vector<std::string> extensions;
    std::string_view rest = list ? list : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(" ,;\t\n"), rest.size());
        std::string_view extension = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        extension.remove_prefix(std::min(extension.find_first_not_of("*."), extension.size()));
        if (!extension.empty())
            extensions.push_back(_KXFoldedText(std::string(extension).c_str()));
    }
    return extensions;
}

bool _KXFileFilter::matchesExtension(const std::string& name) const {
    if (extensions.empty())
        return true;
    const std::string folded = _KXFoldedText(name.c_str());
    return std::any_of(extensions.begin(), extensions.end(), [&](const std::string& extension) {
        return folded.ends_with(extension) && folded.size() > extension.size() &&
               folded[folded.size() - extension.size() - 1] == '.';
    });
}

_KXFolderListing _KXReadFolder(const std::string& path, const _KXFileFilter& filter) {
    _KXFolderListing listing;
    std::vector<SortedEntry> halves[2];
    _KXFolderReader folder(path.c_str());
    while (const char* const next = folder.next()) {
        std::string name = next;
        const fs::file_type type = typeOf(fs::path(path) / name);
        if (isListed(filter, name, type)) {
            const bool isFolder = type == fs::file_type::directory;
            halves[isFolder ? 0 : 1].push_back(
                {_KXNaturalSortKey(name.c_str()), {std::move(name), isFolder}});
        } else {
            listing.hasOthers = true;
        }
    }
    listing.error = folder.error();
    listing.entries.reserve(halves[0].size() + halves[1].size());
    for (std::vector<SortedEntry>& half : halves) {
        std::sort(half.begin(), half.end(),
                  [](const SortedEntry& a, const SortedEntry& b) { return a.rank() < b.rank(); });
        for (SortedEntry& sorted : half)
            listing.entries.push_back(std::move(sorted.entry));
    }
    return listing;
}

_KXPathKind _KXKindOf(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status))
        return _KXPathKind::Nothing;
    return fs::is_directory(status) ? _KXPathKind::Folder : _KXPathKind::File;
}

std::string _KXPathIn(const std::string& folder, const std::string& path) {
    return (fs::path(folder) / path).string();
}

static fs::path workingDirectory() {
    std::error_code error;
    const fs::path path = fs::current_path(error);
    return path.is_absolute() ? path : "/"; // it may have been removed
}

std::string _KXAbsolutePath(const char* path) {
    const fs::path full = workingDirectory() / (path ? path : "");
    // A ".." behind a link is the parent of what the link leads to, which only the system knows. Without one,
    // links stay in the path, so that going up from the folder leads back to where one came from.
    if (std::find(full.begin(), full.end(), "..") != full.end()) {
        std::error_code error;
        if (const fs::path real = fs::canonical(full, error); !error)
            return real.string();
    }
    // By its text alone: a folder that has vanished has a parent too.
    const fs::path plain = full.lexically_normal();
    return (plain.has_filename() ? plain : plain.parent_path()).string();
}

std::string _KXLastPart(const std::string& path) { return fs::path(path).filename().string(); }

std::string _KXParentOf(const std::string& path) { return fs::path(path).parent_path().string(); }
