#include "util/FolderListing.h"

#include "util/TextOrder.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <tuple>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
struct Closer {
    void operator()(DIR* folder) const { closedir(folder); }
    void operator()(char* text) const { std::free(text); }
};

struct SortedEntry {
    std::string key;
    _KXFolderListing::Entry entry;

    // The bytes last: two names that differ in case only keep an order.
    auto rank() const { return std::tie(key, entry.name); }
};

enum class Type { Folder, File, Other };

Type typeOf(mode_t mode) {
    if (S_ISDIR(mode))
        return Type::Folder;
    return S_ISREG(mode) ? Type::File : Type::Other;
}

// Most systems tell the type with the name; asking for it otherwise costs a look at the disk for each entry.
// A link that leads nowhere is a name that is taken, so it is listed.
Type typeOf(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK)
        return typeOf(DTTOIF(entry.d_type));
    struct stat information;
    if (fstatat(dirfd(folder), entry.d_name, &information, 0) != 0)
        return Type::File;
    return typeOf(information.st_mode);
}

bool isListed(const _KXFileFilter& filter, const std::string& name, Type type) {
    if (type == Type::Other || (name[0] == '.' && !filter.showsHidden))
        return false;
    return type == Type::Folder || filter.matchesExtension(name);
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
    const std::unique_ptr<DIR, Closer> folder(opendir(path.c_str()));
    if (!folder) {
        listing.error = errno;
        return listing;
    }
    std::vector<SortedEntry> halves[2];
    errno = 0;
    while (const dirent* entry = readdir(folder.get())) {
        std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        const Type type = typeOf(folder.get(), *entry);
        if (isListed(filter, name, type)) {
            const bool isFolder = type == Type::Folder;
            halves[isFolder ? 0 : 1].push_back(
                {_KXNaturalSortKey(name.c_str()), {std::move(name), isFolder}});
        } else {
            listing.hasOthers = true;
        }
        errno = 0; // looking at an entry may have set it
    }
    listing.error = errno;
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
    struct stat information;
    if (stat(path.c_str(), &information) != 0)
        return _KXPathKind::Nothing;
    return S_ISDIR(information.st_mode) ? _KXPathKind::Folder : _KXPathKind::File;
}

std::string _KXPathIn(const std::string& folder, const std::string& path) {
    if (path.starts_with('/'))
        return path;
    return folder.ends_with('/') ? folder + path : folder + "/" + path;
}

static std::string workingDirectory() {
    const std::unique_ptr<char, Closer> path(getcwd(nullptr, 0));
    return path && path.get()[0] == '/' ? path.get() : "/";
}

// By its text alone: a folder that has vanished has a parent too.
static std::string withoutDots(const std::string& path) {
    std::vector<std::string_view> parts;
    std::string_view rest = path;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        const std::string_view part = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (part == ".." && !parts.empty())
            parts.pop_back();
        else if (!part.empty() && part != "." && part != "..")
            parts.push_back(part);
    }
    std::string plain;
    for (const std::string_view part : parts)
        plain.append("/").append(part);
    return plain.empty() ? "/" : plain;
}

std::string _KXAbsolutePath(const char* path) {
    const std::string full = path && *path ? _KXPathIn(workingDirectory(), path) : workingDirectory();
    // A ".." behind a link is the parent of what the link leads to, which only the system knows. Without one,
    // links stay as they are, so that the way up is the way down.
    if ((full + "/").find("/../") != std::string::npos)
        if (const std::unique_ptr<char, Closer> real(realpath(full.c_str(), nullptr)); real)
            return real.get();
    return withoutDots(full);
}

std::string _KXLastPart(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string _KXParentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}
