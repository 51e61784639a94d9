#pragma once

#include "platform/FilePath.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

/// A file's bytes; none if there is no such file.
inline std::string contentOf(const std::string& path) {
    std::ifstream file(_KXFilePath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// An empty folder that disappears with the object, and with it any change of the working folder. Its name
/// holds a space, an accent and an emoji, so that whatever is tested in it is tested with them.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const std::string name =
            _KXTextOf(std::filesystem::temp_directory_path() / u8"kx t\u00e9st \U0001F3AE ");
        do
            _path = name + std::to_string(std::random_device()());
        while (!std::filesystem::create_directory(_KXFilePath(_path)));
        std::filesystem::permissions(_KXFilePath(_path), std::filesystem::perms::owner_all);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::current_path(_workingFolder, ignored);
        std::filesystem::remove_all(_KXFilePath(_path), ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// The path of something in the folder.
    std::string operator/(const std::string& name) const { return _path + "/" + name; }
    const std::string& path() const { return _path; }

    /// Makes it the working folder, as long as it lives.
    void enter() const { std::filesystem::current_path(_KXFilePath(_path)); }
    /// Writes a file in the folder and returns its path.
    std::string write(const std::string& name, const std::string& content = "content") const {
        const std::string path = *this / name;
        std::ofstream(_KXFilePath(path), std::ios::binary) << content;
        return path;
    }

private:
    const std::filesystem::path _workingFolder = std::filesystem::current_path();
    std::string _path;
};
