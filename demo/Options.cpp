#include "Options.h"

#include <charconv>
#include <cstdio>
#include <string_view>

void printUsage() {
    std::fputs(
#include "Usage.inc" // ./play shows it, too
        , stdout);
}

static bool readCount(std::string_view text, int& count, int most) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() && end == text.data() + text.size() && count > 0 && count <= most;
}

bool splitAddress(const std::string& address, std::string& host, int& port) {
    constexpr int largestPort = 65535;
    const std::size_t colon = address.rfind(':');
    if (colon == std::string::npos || colon == 0 ||
        !readCount(std::string_view(address).substr(colon + 1), port, largestPort))
        return false;
    host = address.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) // an address of IPv6
        host = host.substr(1, host.size() - 2);
    return true;
}

// The value of one option. False if the option is unknown or the value makes no sense.
static bool readValue(std::string_view option, const char* value, Options& options) {
    constexpr int most = 1'000'000'000, largestPort = 65535, longestNight = 3600;
    std::string host;
    int port = 0;
    if (option == "--frames")
        return readCount(value, options.frames, most);
    if (option == "--night")
        return readCount(value, options.night, longestNight);
    if (option == "--nights")
        return readCount(value, options.nights, most);
    if (option == "--host")
        return readCount(value, options.hostPort, largestPort);
    std::string* text = option == "--screenshot" ? &options.screenshot
                        : option == "--replay"   ? &options.replay
                        : option == "--record"   ? &options.record
                        : option == "--save"     ? &options.save
                        : option == "--join"     ? &options.join
                                                 : nullptr;
    if (!text || !*value || (option == "--join" && !splitAddress(value, host, port)))
        return false;
    *text = value;
    return true;
}

bool readOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        if (option == "--headless") {
            options.headless = true;
        } else if (option == "--help") {
            options.help = true;
        } else if (option == "--widgets") {
            options.widgets = true;
        } else if (i + 1 < argc && readValue(option, argv[i + 1], options)) {
            ++i;
        } else {
            std::fprintf(stderr, "play: '%s' is not understood; see play --help\n", argv[i]);
            return false;
        }
    }
    return true;
}
