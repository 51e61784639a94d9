#include "util/FolderListing.h"

#include "platform/FilePath.h"
#include "platform/FolderReader.h"
#include "platform/LocalTime.h"
#include "platform/UserFolder.h"
#include "util/TextOrder.h"
#include "util/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

namespace fs = std::filesystem;

namespace {
using Entry = _KXFolderListing::Entry;

struct SortedEntry {
    bool isFile;
    std::string key;
    Entry entry;

    // The bytes last: two names that differ in case only keep an order.
    auto rank() const { return std::tie(isFile, key, entry.name); }
};

void sortByName(std::vector<Entry>& entries) {
    std::vector<SortedEntry> sorted;
    sorted.reserve(entries.size());
    for (const Entry& entry : entries)
        sorted.push_back({!entry.isFolder, _KXNaturalSortKey(entry.name.c_str()), entry});
    std::sort(sorted.begin(), sorted.end(),
              [](const SortedEntry& a, const SortedEntry& b) { return a.rank() < b.rank(); });
    std::ranges::transform(sorted, entries.begin(), [](SortedEntry& each) { return std::move(each.entry); });
}

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
    _KXFolderReader folder(path.c_str());
    while (const char* const next = folder.next()) {
        const std::string name = next, whole = _KXPathIn(path, name);
        const fs::file_type type = typeOf(_KXFilePath(whole));
        if (isListed(filter, name, type))
            listing.entries.push_back(
                {name, type == fs::file_type::directory, _KXFactsOfFile(whole.c_str())});
        else
            listing.hasOthers = true;
    }
    listing.error = folder.error();
    return listing;
}

void _KXSortListing(std::vector<Entry>& entries, _KXListingOrder order, bool reversed) {
    sortByName(entries);
    const auto files = std::ranges::find(entries, false, &Entry::isFolder);
    if (order == _KXListingOrder::Size)
        std::stable_sort(files, entries.end(),
                         [](const Entry& a, const Entry& b) { return a.facts.size > b.facts.size; });
    for (const auto& [begin, end] : {std::pair(entries.begin(), files), std::pair(files, entries.end())}) {
        if (order == _KXListingOrder::Changed)
            std::stable_sort(
                begin, end, [](const Entry& a, const Entry& b) { return a.facts.changed > b.facts.changed; });
        if (reversed)
            std::reverse(begin, end);
    }
}

std::string _KXSizeText(std::uint64_t bytes) {
    if (bytes < 1000)
        return std::to_string(bytes) + " B";
    const char* unit = "KMGTPE";
    auto amount = static_cast<double>(bytes) / 1000;
    for (; amount >= 999.5; amount /= 1000)
        ++unit;
    char text[32];
    std::snprintf(text, sizeof text, amount < 9.95 ? "%.1f %cB" : "%.0f %cB", amount, *unit);
    return text;
}

std::string _KXDateText(std::time_t time) {
    const std::tm local = _KXLocalTime(time);
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local));
}

_KXPathKind _KXKindOf(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(_KXFilePath(path), error);
    if (!fs::exists(status))
        return _KXPathKind::Nothing;
    return fs::is_directory(status) ? _KXPathKind::Folder : _KXPathKind::File;
}

std::string _KXPathIn(const std::string& folder, const std::string& path) {
    return _KXTextOf(_KXPlainPath(folder) / _KXPlainPath(path));
}

static fs::path workingDirectory() {
    std::error_code error;
    const fs::path path = fs::current_path(error);
    return path.is_absolute() ? path : fs::path("/"); // it may have been removed
}

std::string _KXAbsolutePath(const char* path) {
    const fs::path full = workingDirectory() / _KXPlainPath(path ? path : "");
    // A ".." behind a link is the parent of what the link leads to, which only the system knows. Without one,
    // links stay in the path, so that going up from the folder leads back to where one came from.
    if (std::find(full.begin(), full.end(), "..") != full.end()) {
        std::error_code error;
        if (const fs::path real = fs::canonical(_KXFilePath(_KXTextOf(full)), error); !error)
            return _KXTextOf(real);
    }
    // By its text alone: a folder that has vanished has a parent too.
    const fs::path plain = full.lexically_normal();
    return _KXTextOf(plain.has_filename() ? plain : plain.parent_path());
}

std::string _KXHomeFolder() {
    const std::string home = _KXUserHome();
    return !home.empty() && _KXKindOf(home) == _KXPathKind::Folder ? _KXAbsolutePath(home.c_str()) : "";
}

std::string _KXShownName(const std::string& name) {
    std::string shown = _KXLegibleText(name.c_str()).get();
    std::ranges::replace_if(
        shown, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, '?');
    return shown;
}

std::string _KXLastPart(const std::string& path) { return _KXTextOf(_KXPlainPath(path).filename()); }

std::string _KXParentOf(const std::string& path) { return _KXTextOf(_KXPlainPath(path).parent_path()); }
