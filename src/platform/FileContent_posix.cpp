#include "platform/FileContent.h"

#include <algorithm>
#include <cerrno>
#include <initializer_list>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static std::error_code lastError() { return {errno, std::system_category()}; }

namespace {
class Descriptor {
public:
    explicit Descriptor(int number) : _number(number) {}
    ~Descriptor() {
        if (_number >= 0)
            ::close(_number);
    }
    Descriptor(Descriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;

    explicit operator bool() const { return _number >= 0; }
    int number() const { return _number; }

    std::error_code write(std::string_view content) const {
        while (!content.empty()) {
            const ssize_t count = ::write(_number, content.data(), content.size());
            if (count > 0)
                content.remove_prefix(static_cast<std::size_t>(count));
            else if (count == 0 || errno != EINTR)
                return count == 0 ? std::make_error_code(std::errc::io_error) : lastError();
        }
        return {};
    }
    /// Some file systems have nothing to flush.
    std::error_code flush() const {
        return fsync(_number) == 0 || errno == EINVAL || errno == ENOSYS ? std::error_code() : lastError();
    }
    /// What was written over a network may fail as late as this.
    std::error_code close() {
        return ::close(std::exchange(_number, -1)) == 0 ? std::error_code() : lastError();
    }

private:
    int _number;
};
} // namespace

// Whoever may read and write the one file may the other.
static std::error_code takePermissions(int descriptor, const struct stat& from) {
    mode_t mode = from.st_mode & 0777;
    struct stat own = {};
    if (fstat(descriptor, &own) != 0)
        return lastError();
    const bool isOthers = own.st_uid != from.st_uid || own.st_gid != from.st_gid;
    if (isOthers && fchown(descriptor, from.st_uid, from.st_gid) != 0)
        mode = (mode & ~070U) | (mode & 07) << 3; // another group has no more rights than anybody
    return fchmod(descriptor, mode) == 0 ? std::error_code() : lastError();
}

// Another process cannot have the number of this one, so a name that is taken was left by one that ended.
static Descriptor openNewFile(const std::string& folder, mode_t mode, std::string& path) {
    static constinit unsigned count = 0;
    for (int attempts = 0; attempts < 100; ++attempts) {
        path = folder + ".saving-" + std::to_string(getpid()) + '-' + std::to_string(++count);
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (descriptor >= 0 || errno != EEXIST)
            return Descriptor(descriptor);
    }
    return Descriptor(-1);
}

// Where the system cannot flush a folder the new name may be lost with the power, but never both contents.
static void flushFolder(const std::string& path) {
    const Descriptor folder(open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder)
        static_cast<void>(folder.flush());
}

static std::error_code fill(Descriptor file, const struct stat* old, std::string_view content) {
    std::error_code error = old ? takePermissions(file.number(), *old) : std::error_code();
    if (!error)
        error = file.write(content);
    if (!error)
        error = file.flush();
    const std::error_code closing = file.close();
    return error ? error : closing;
}

std::error_code _KXExchangeFile(const std::string& path, std::string_view content) {
    struct stat old = {};
    const bool isThere = stat(path.c_str(), &old) == 0;
    if (isThere && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        return lastError();
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    std::string beside;
    // Nobody else reads it before it has the permissions of the old one.
    Descriptor file = openNewFile(folder, isThere ? 0600 : 0666, beside);
    if (!file)
        return lastError();
    std::error_code error = fill(std::move(file), isThere ? &old : nullptr, content);
    if (!error && rename(beside.c_str(), path.c_str()) != 0)
        error = lastError();
    if (error)
        unlink(beside.c_str());
    else
        flushFolder(folder);
    return error;
}

std::error_code _KXWriteInPlace(const std::string& path, std::string_view content) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_TRUNC | O_NOCTTY | O_CLOEXEC));
    if (!file)
        return lastError();
    const std::error_code error = file.write(content), closing = file.close();
    return error ? error : closing;
}

bool _KXIsOutputOfProcess(const std::string& path) {
    struct stat file = {};
    if (stat(path.c_str(), &file) != 0)
        return false;
    return std::ranges::any_of(std::initializer_list<int>{STDOUT_FILENO, STDERR_FILENO}, [&](int descriptor) {
        struct stat output = {};
        return fstat(descriptor, &output) == 0 && output.st_dev == file.st_dev &&
               output.st_ino == file.st_ino;
    });
}
