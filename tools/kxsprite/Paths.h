#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Texts that name files are UTF-8 everywhere. What the standard library makes of a text is another path on
// Windows, and its text for a path has other slashes there.

inline std::filesystem::path pathOf(std::string_view text) { return std::u8string(text.begin(), text.end()); }

inline std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}
