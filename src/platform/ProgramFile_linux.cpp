#include "platform/ProgramFile.h"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

std::string _KXProgramFile() {
    std::error_code error;
    std::string path = fs::read_symlink("/proc/self/exe", error).string();
    constexpr std::string_view replaced = " (deleted)"; // by an update, while it runs
    if (path.ends_with(replaced) && !fs::exists(path, error))
        path.resize(path.size() - replaced.size());
    return path;
}
