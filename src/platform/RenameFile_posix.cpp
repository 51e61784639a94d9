#include "platform/RenameFile.h"

#include <filesystem>

std::error_code _KXRenameFile(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::rename(from, to, error);
    return error;
}
