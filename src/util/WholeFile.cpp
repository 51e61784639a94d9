#include "util/WholeFile.h"

#include "core/ground/ErrorSlot.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

static bool report(const char* path, const char* why) {
    _KXReportError("%s: %s", path ? path : "no path", why);
    return false;
}

bool _KXReadWholeFile(const char* path, std::size_t maximum, std::string& content) {
    const File file(path ? std::fopen(path, "rb") : nullptr, std::fclose);
    if (!file)
        return report(path, "cannot be opened");
    content.resize(maximum + 1); // a byte more tells that there are more
    content.resize(std::fread(content.data(), 1, content.size(), file.get()));
    if (std::ferror(file.get()))
        return report(path, "cannot be read");
    return content.size() <= maximum || report(path, "is too large");
}

static bool write(const char* path, std::string_view content) {
    File file(std::fopen(path, "wb"), std::fclose);
    if (!file)
        return false;
    bool written = std::fwrite(content.data(), 1, content.size(), file.get()) == content.size();
    written &= std::fclose(file.release()) == 0; // what waited in the buffer may fail, too
    if (!written)
        std::remove(path);
    return written;
}

// Where a link leads to, so that the link stays. Empty for one that leads nowhere.
static fs::path targetOf(const char* path) {
    std::error_code error;
    const fs::path link = path ? path : "";
    return fs::is_symlink(link, error) ? fs::canonical(link, error) : link;
}

bool _KXReplaceFile(const char* path, std::string_view content) {
    const fs::path target = targetOf(path), beside = target.string() + ".new";
    if (target.empty() || !write(beside.c_str(), content))
        return report(path, "cannot be written");
    std::error_code error, ignored;
    fs::rename(beside, target, error);
    if (!error)
        return true;
    fs::remove(beside, ignored);
    return report(path, "cannot be replaced");
}
