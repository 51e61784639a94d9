#include "platform/FileContent.h"
#include "platform/Wide.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include <windows.h>

static std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

namespace {
class Handle {
public:
    explicit Handle(HANDLE handle) : _handle(handle) {}
    ~Handle() {
        if (*this)
            CloseHandle(_handle);
    }
    Handle(Handle&& other) noexcept : _handle(std::exchange(other._handle, INVALID_HANDLE_VALUE)) {}
    Handle& operator=(Handle&&) = delete;

    explicit operator bool() const { return _handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return _handle; }

    std::error_code write(std::string_view content) const {
        while (!content.empty()) {
            const DWORD most = static_cast<DWORD>(std::min<std::size_t>(content.size(), 1U << 30));
            DWORD count = 0;
            if (!WriteFile(_handle, content.data(), most, &count, nullptr))
                return lastError();
            content.remove_prefix(count);
        }
        return {};
    }

private:
    HANDLE _handle;
};
} // namespace

// Another process cannot have the number of this one, so a name that is taken was left by one that ended.
static Handle openNewFile(const std::wstring& folder, std::wstring& path) {
    static constinit unsigned count = 0;
    for (int attempts = 0; attempts < 100; ++attempts) {
        path =
            folder + L".saving-" + std::to_wstring(GetCurrentProcessId()) + L'-' + std::to_wstring(++count);
        const HANDLE handle =
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS)
            return Handle(handle);
    }
    return Handle(INVALID_HANDLE_VALUE);
}

static std::error_code fill(const Handle& file, std::string_view content) {
    const std::error_code error = file.write(content);
    return error || FlushFileBuffers(file.get()) ? error : lastError();
}

// Replacing keeps the permissions of the old file, and whoever has that open keeps what it was. Programs that
// look at every new file, as those against viruses do, may hold one of the two for a moment.
static std::error_code putInPlace(const std::wstring& beside, const std::wstring& path) {
    constexpr int mostAttempts = 8; // an eighth of a second in all
    for (int attempt = 0;; ++attempt) {
        if (ReplaceFileW(path.c_str(), beside.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                         nullptr) ||
            MoveFileExW(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return {};
        const std::error_code error = lastError();
        const bool isHeld = error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_ACCESS_DENIED;
        if (!isHeld || attempt == mostAttempts)
            return error;
        Sleep(1U << std::min(attempt, 5));
    }
}

std::error_code _KXExchangeFile(const std::string& path, std::string_view content) {
    const std::wstring wide = _KXWidePath(path);
    const DWORD old = GetFileAttributesW(wide.c_str());
    if (old != INVALID_FILE_ATTRIBUTES && (old & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0)
        return {ERROR_ACCESS_DENIED, std::system_category()};
    std::wstring beside;
    std::error_code error;
    {
        const Handle file = openNewFile(wide.substr(0, wide.find_last_of(L"/\\") + 1), beside);
        if (!file)
            return lastError();
        error = fill(file, content);
    }
    if (!error)
        error = putInPlace(beside, wide);
    if (error)
        DeleteFileW(beside.c_str());
    return error;
}

std::error_code _KXWriteInPlace(const std::string& path, std::string_view content) {
    const Handle file(CreateFileW(_KXWidePath(path).c_str(), GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return lastError();
    if (GetFileType(file.get()) == FILE_TYPE_DISK && !SetEndOfFile(file.get()))
        return lastError();
    return file.write(content);
}

// The number of a file on its disk; none where there is nothing of the kind.
static bool identify(HANDLE handle, BY_HANDLE_FILE_INFORMATION& facts) {
    return handle != INVALID_HANDLE_VALUE && GetFileType(handle) == FILE_TYPE_DISK &&
           GetFileInformationByHandle(handle, &facts);
}

bool _KXIsOutputOfProcess(const std::string& path) {
    const Handle handle(CreateFileW(_KXWidePath(path).c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
    BY_HANDLE_FILE_INFORMATION file = {};
    if (!identify(handle.get(), file))
        return false;
    return std::ranges::any_of(
        std::initializer_list<DWORD>{STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}, [&](DWORD which) {
            BY_HANDLE_FILE_INFORMATION output = {};
            return identify(GetStdHandle(which), output) &&
                   output.dwVolumeSerialNumber == file.dwVolumeSerialNumber &&
                   output.nFileIndexHigh == file.nFileIndexHigh && output.nFileIndexLow == file.nFileIndexLow;
        });
}
