#include "Options.h"

#include <cstdio>

static constexpr int largestPort = 65535;

void printUsage() {
    std::fputs(
#include "../Usage.inc" // ./play shows it, too
        , stdout);
}

bool splitAddress(const std::string& address, std::string& host, int& port) {
    const std::size_t colon = address.rfind(':');
    if (colon == std::string::npos || colon == 0 ||
        !Options::readCount(std::string_view(address).substr(colon + 1), port, largestPort))
        return false;
    host = address.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) // an address of IPv6
        host = host.substr(1, host.size() - 2);
    return true;
}

bool Options::readFlag(std::string_view option) {
    widgets |= option == "--widgets";
    return option == "--widgets";
}

bool Options::readValue(std::string_view option, const char* value) {
    constexpr int most = 1'000'000'000, longestNight = 3600;
    std::string host;
    int port = 0;
    if (option == "--night")
        return readCount(value, night, longestNight);
    if (option == "--nights")
        return readCount(value, nights, most);
    if (option == "--host")
        return readCount(value, hostPort, largestPort);
    if (option != "--join" || !splitAddress(value, host, port))
        return false;
    join = value;
    return true;
}
