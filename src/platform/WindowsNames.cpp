#include "platform/WindowsNames.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace {
enum Fault { None, NoText, Letter, Ending, Length, Device };

class Faults : public std::error_category {
public:
    const char* name() const noexcept override { return "windows-names"; }
    std::string message(int fault) const override {
        switch (fault) {
        case NoText:
            return "on Windows a name has to be UTF-8";
        case Letter:
            return "on Windows no name can hold < > : \" | ? * or a control character";
        case Ending:
            return "on Windows no name can end with a dot or a blank";
        case Length:
            return "on Windows no name can be longer than 255 letters";
        default:
            return "on Windows CON, NUL and the like are devices, with any extension";
        }
    }
};
} // namespace

static constexpr char mark = '|';

static bool isSlash(char letter) { return letter == '/' || letter == '\\'; }

// As the standard has it: no longer than it must be, no half of a pair, nothing beyond the last.
static bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text.front());
        const std::size_t length = first < 0x80   ? 1
                                   : first < 0xC2 ? 0
                                   : first < 0xE0 ? 2
                                   : first < 0xF0 ? 3
                                                  : 4;
        if (length == 0 || first > 0xF4 || text.size() < length)
            return false;
        for (std::size_t i = 1; i < length; ++i) {
            const auto next = static_cast<unsigned char>(text[i]);
            const unsigned char least = i > 1 ? 0x80 : first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
            const unsigned char most = i > 1 ? 0xBF : first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
            if (next < least || next > most)
                return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

// In units of UTF-16, which the system counts.
static std::size_t lengthOf(std::string_view utf8) {
    const auto units = [](std::size_t sum, unsigned char byte) {
        return sum + ((byte & 0xC0) != 0x80) + (byte >= 0xF0); // two for what lies beyond U+FFFF
    };
    return std::accumulate(utf8.begin(), utf8.end(), std::size_t(0), units);
}

static bool isDevice(std::string_view name) {
    std::string stem(name.substr(0, name.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    std::ranges::transform(stem, stem.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    for (const char* const device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"})
        if (stem == device)
            return true;
    if (!stem.starts_with("COM") && !stem.starts_with("LPT"))
        return false;
    const std::string_view number = std::string_view(stem).substr(3);
    return (number.size() == 1 && number >= "1" && number <= "9") || number == "\u00b9" ||
           number == "\u00b2" || number == "\u00b3";
}

static Fault faultOf(std::string_view name) {
    if (name == "." || name == "..")
        return None;
    if (!isUtf8(name))
        return NoText;
    if (std::ranges::any_of(name, [](unsigned char letter) {
            return letter < ' ' || std::string_view("<>:\"|?*").find(letter) != std::string_view::npos;
        }))
        return Letter;
    if (lengthOf(name) > 255)
        return Length;
    if (isDevice(name)) // before its end is looked at: "nul " is one
        return Device;
    return name.ends_with('.') || name.ends_with(' ') ? Ending : None;
}

// The bytes at a path's beginning that belong to no name: a drive; everything where the path is the system's
// own.
static std::size_t beginningOf(std::string_view path) {
    const bool isSystems = path.size() > 3 && isSlash(path[0]) && isSlash(path[1]) &&
                           (path[2] == '.' || path[2] == '?') && isSlash(path[3]);
    const bool hasDrive = path.size() > 1 && path[1] == ':' &&
                          ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z'));
    return isSystems ? path.size() : hasDrive ? 2 : 0;
}

std::error_code _KXFaultOfWindowsPath(std::string_view path) {
    static constinit const Faults faults;
    path.remove_prefix(beginningOf(path));
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        if (const Fault fault = end > 0 ? faultOf(path.substr(0, end)) : None)
            return {fault, faults};
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return {};
}

std::string _KXMarkWindowsPath(std::string_view path) {
    std::string marked(path.substr(0, beginningOf(path)));
    path.remove_prefix(marked.size());
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        if (end > 0 && faultOf(path.substr(0, end)))
            marked += mark;
        const std::size_t taken = std::min(end + 1, path.size());
        marked += path.substr(0, taken);
        path.remove_prefix(taken);
    }
    return marked;
}

std::string _KXUnmarkWindowsPath(std::string path) {
    std::ranges::replace(path, '\\', '/');
    for (std::size_t at = beginningOf(path); at < path.size(); ++at) {
        if (path[at] == mark)
            path.erase(at, 1);
        at = std::min(path.find('/', at), path.size());
    }
    return path;
}
