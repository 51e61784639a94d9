#include "platform/SocketAddress.h"

#include "platform/SystemSockets.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>

static constexpr std::size_t prefixLength = 12; // of an address of IPv4
static constexpr int firstHalf = 8;             // of one of IPv6

bool _KXSocketAddress::isIPv4() const {
    return std::equal(host.begin(), host.begin() + prefixLength, _KXSocketAddress().host.begin());
}

unsigned _KXToSystem(const _KXSocketAddress& address, sockaddr_storage& system) {
    system = {};
    if (address.isIPv4()) {
        auto& v4 = reinterpret_cast<sockaddr_in&>(system);
        v4.sin_family = AF_INET;
        v4.sin_port = htons(address.port);
        std::memcpy(&v4.sin_addr, address.host.data() + prefixLength, sizeof v4.sin_addr);
        return sizeof v4;
    }
    auto& v6 = reinterpret_cast<sockaddr_in6&>(system);
    v6.sin6_family = AF_INET6;
    v6.sin6_port = htons(address.port);
    v6.sin6_scope_id = address.scope;
    std::memcpy(&v6.sin6_addr, address.host.data(), sizeof v6.sin6_addr);
    return sizeof v6;
}

_KXSocketAddress _KXFromSystem(const sockaddr_storage& system) {
    _KXSocketAddress address;
    if (system.ss_family == AF_INET) {
        const auto& v4 = reinterpret_cast<const sockaddr_in&>(system);
        address.port = ntohs(v4.sin_port);
        std::memcpy(address.host.data() + prefixLength, &v4.sin_addr, sizeof v4.sin_addr);
    } else if (system.ss_family == AF_INET6) {
        const auto& v6 = reinterpret_cast<const sockaddr_in6&>(system);
        address.port = ntohs(v6.sin6_port);
        address.scope = v6.sin6_scope_id;
        std::memcpy(address.host.data(), &v6.sin6_addr, sizeof v6.sin6_addr);
    }
    return address;
}

static std::vector<_KXSocketAddress> find(const char* host, int port, int flags) {
    std::vector<_KXSocketAddress> addresses;
    _KXStartSockets();
    addrinfo hints = {}, *found = nullptr;
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    if (port < 0 || port > 65535 || getaddrinfo(host, nullptr, &hints, &found) != 0)
        return addresses;
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> list(found, freeaddrinfo);
    for (const addrinfo* each = found; each; each = each->ai_next) {
        if (each->ai_family != AF_INET && each->ai_family != AF_INET6)
            continue;
        sockaddr_storage system = {};
        std::memcpy(&system, each->ai_addr, std::min<std::size_t>(each->ai_addrlen, sizeof system));
        addresses.push_back(_KXFromSystem(system));
        addresses.back().port = static_cast<std::uint16_t>(port);
    }
    return addresses;
}

// An empty name is this machine's own to some systems.
std::vector<_KXSocketAddress> _KXFindAddresses(const char* host, int port) {
    return *host ? find(host, port, 0) : std::vector<_KXSocketAddress>();
}

std::vector<_KXSocketAddress> _KXReadAddresses(const char* host, int port) {
    return find(host, port, AI_NUMERICHOST);
}

bool _KXFindAddress(const char* host, int port, _KXSocketAddress& address) {
    if (!host) {
        address = {};
        address.port = static_cast<std::uint16_t>(port);
        return port >= 0 && port <= 65535;
    }
    const std::vector<_KXSocketAddress> all = _KXFindAddresses(host, port);
    if (all.empty())
        return false;
    const auto v4 = std::find_if(all.begin(), all.end(), [](const auto& each) { return each.isIPv4(); });
    address = v4 == all.end() ? all.front() : *v4;
    return true;
}

// A number from 0 to 65535; -1 for anything else.
static int portIn(const std::string& text) {
    const auto isDigit = [](unsigned char letter) { return std::isdigit(letter) != 0; };
    if (text.empty() || text.size() > 5 || !std::all_of(text.begin(), text.end(), isDigit))
        return -1;
    return std::stoi(text);
}

bool _KXReadAddress(const std::string& text, _KXSocketAddress& address) {
    std::string host = text;
    int port = 0;
    const std::size_t colon = text.rfind(':');
    const bool bracketed = text.starts_with('[');
    if (colon != std::string::npos && (bracketed ? text[colon - 1] == ']' : text.find(':') == colon)) {
        host = text.substr(0, colon);
        port = portIn(text.substr(colon + 1));
    }
    if (bracketed)
        host = host.ends_with(']') ? host.substr(1, host.size() - 2) : "";
    const std::vector<_KXSocketAddress> found = _KXReadAddresses(host.c_str(), port);
    if (host.empty() || found.empty())
        return false;
    address = found.front();
    return true;
}

std::string _KXHostText(const _KXSocketAddress& address) {
    sockaddr_storage system;
    const socklen_t length = _KXToSystem(address, system);
    _KXStartSockets();
    char host[NI_MAXHOST] = "";
    getnameinfo(reinterpret_cast<const sockaddr*>(&system), length, host, sizeof host, nullptr, 0,
                NI_NUMERICHOST);
    return host;
}

std::string _KXAddressText(const _KXSocketAddress& address) {
    const std::string host = _KXHostText(address);
    return (address.isIPv4() ? host : "[" + host + "]") + ":" + std::to_string(address.port);
}

_KXSocketAddress _KXHouseholdOf(_KXSocketAddress address) {
    address.port = 0;
    // Machines that share a cable share the first half of the addresses that hold for it alone.
    const bool ofOneCable = address.host[0] == 0xFE && (address.host[1] & 0xC0) == 0x80;
    if (!address.isIPv4() && !ofOneCable) {
        std::fill(address.host.begin() + firstHalf, address.host.end(), std::uint8_t(0));
        address.scope = 0;
    }
    return address;
}
