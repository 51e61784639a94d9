#include "Options.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

void printUsage() {
    std::puts("usage: play [--headless] [--frames N] [--screenshot FILE]\n"
              "  --headless         run without a display, play a short script, leave a screenshot and end\n"
              "  --frames N         end after N frames\n"
              "  --screenshot FILE  write the last frame to FILE (.bmp, otherwise PNG)");
}

static bool readCount(std::string_view text, int& count) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() && end == text.data() + text.size() && count > 0;
}

bool readOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (option == "--headless") {
            options.headless = true;
        } else if (option == "--help") {
            options.help = true;
        } else if (option == "--frames" && value && readCount(value, options.frames)) {
            ++i;
        } else if (option == "--screenshot" && value && *value) {
            options.screenshot = value;
            ++i;
        } else {
            std::fprintf(stderr, "play: '%s' is not understood; see play --help\n", argv[i]);
            return false;
        }
    }
    return true;
}
