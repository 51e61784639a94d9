#include "util/FollowedFile.h"

#include "core/ground/HeapGlobal.h"
#include "core/ground/LogicClock.h"
#include "platform/FilePath.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace {
struct Stamp {
    fs::file_time_type changed;
    std::uintmax_t size;

    bool operator==(const Stamp&) const = default;
};

// Nothing where there is no file, be it for the moment in which a program replaces it.
std::optional<Stamp> stampOf(const fs::path& path) {
    std::error_code error;
    const Stamp stamp = {fs::last_write_time(path, error), error ? 0 : fs::file_size(path, error)};
    return error ? std::nullopt : std::optional(stamp);
}
} // namespace

struct _KXFollowedFile::Watch {
    explicit Watch(const std::string& file) : path(_KXFilePath(file)), loaded(stampOf(path)), seen(loaded) {}

    // A program may be writing still: what counts is a file that is as it was at the look before.
    void look() {
        const std::optional<Stamp> now = stampOf(path);
        if (now && now == seen && now != loaded) {
            loaded = now;
            ++changes;
        }
        seen = now;
    }

    const fs::path path;
    std::optional<Stamp> loaded, seen;
    unsigned changes = 0;

    using All = std::map<std::string, std::weak_ptr<Watch>>;
    static constinit _KXHeapGlobal<All> all;
};

constinit _KXHeapGlobal<_KXFollowedFile::Watch::All> _KXFollowedFile::Watch::all;

bool _KXLookAtFiles() {
    constexpr std::uint64_t interval = 250'000'000; // nanoseconds
    static constinit std::uint64_t lastLook = 0;
    const std::uint64_t now = _KXWorldNanoseconds();
    if (now - lastLook < interval) // also after another clock has taken over, which may be behind
        return false;
    lastLook = now;
    auto& all = _KXFollowedFile::Watch::all.get();
    for (auto entry = all.begin(); entry != all.end();) {
        const auto watch = entry->second.lock();
        if (watch)
            watch->look();
        entry = watch ? std::next(entry) : all.erase(entry);
    }
    return true;
}

void _KXFollowedFile::follow(const std::string& path) {
    if (!_watch || _watch->path != path) {
        auto& shared = Watch::all.get()[path];
        _watch = shared.lock();
        if (!_watch)
            shared = _watch = std::make_shared<Watch>(path);
    }
    _changes = _watch->changes;
}

bool _KXFollowedFile::hasChanged(const std::string& path) {
    if (!_watch)
        follow(path);
    const bool isNew = _changes != _watch->changes;
    _changes = _watch->changes;
    return isNew;
}
