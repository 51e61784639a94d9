#include "CommonOptions.h"

#include <charconv>
#include <cstdio>

bool CommonOptions::readCount(std::string_view text, int& count, int most) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() && end == text.data() + text.size() && count > 0 && count <= most;
}

bool CommonOptions::readCommon(std::string_view option, const char* value) {
    constexpr int most = 1'000'000'000;
    if (option == "--frames")
        return readCount(value, frames, most);
    std::string* const text = option == "--screenshot" ? &screenshot
                              : option == "--replay"   ? &replay
                              : option == "--record"   ? &record
                              : option == "--save"     ? &save
                                                       : nullptr;
    if (!text || !*value)
        return false;
    *text = value;
    return true;
}

bool CommonOptions::read(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        if (option == "--headless") {
            headless = true;
        } else if (option == "--help") {
            help = true;
        } else if (readFlag(option)) {
        } else if (i + 1 < argc && (readCommon(option, argv[i + 1]) || readValue(option, argv[i + 1]))) {
            ++i;
        } else {
            std::fprintf(stderr, "play: '%s' is not understood; see play --help\n", argv[i]);
            return false;
        }
    }
    return true;
}
