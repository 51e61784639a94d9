#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct sockaddr_storage;

/// An address of the network and a port.
struct _KXSocketAddress {
    /// In the order of the network. One of IPv4 stands behind the prefix that IPv6 has for them, and so it is
    /// the same however it has come; 0.0.0.0 and :: are every address this machine has.
    std::array<std::uint8_t, 16> host = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    std::uint32_t scope = 0; ///< Which of the machine's networks, for addresses that each of them has.
    std::uint16_t port = 0;  ///< A plain number.

    bool isIPv4() const;
    auto operator<=>(const _KXSocketAddress&) const = default;
};

/// All addresses of a name or of an address that is written out, in the order in which they are to be tried;
/// none if it is unknown. Asks other machines if need be, and waits for them; any thread may ask.
std::vector<_KXSocketAddress> _KXFindAddresses(const char* host, int port);
/// The same for what is written out; none for a name.
std::vector<_KXSocketAddress> _KXReadAddresses(const char* host, int port);
/// The first of them that is one of IPv4, or else the first. Null stands for every IPv4 address of this
/// machine. False if there is none, or if the port is none.
bool _KXFindAddress(const char* host, int port, _KXSocketAddress& address);
/// Reads an address that is written out, with or without a port: 192.0.2.1:80, [2001:db8::1]:80, 2001:db8::1.
/// Asks nobody. False if it is none.
bool _KXReadAddress(const std::string& text, _KXSocketAddress& address);
/// An address without its port as it is written out.
std::string _KXHostText(const _KXSocketAddress& address);
/// An address as "192.0.2.1:80" or "[2001:db8::1]:80".
std::string _KXAddressText(const _KXSocketAddress& address);
/// What one household has for an address: all of one of IPv4, the first half of one of IPv6, no port.
_KXSocketAddress _KXHouseholdOf(_KXSocketAddress address);

/// The address as the system's calls have it, and how many bytes of it count.
unsigned _KXToSystem(const _KXSocketAddress& address, sockaddr_storage& system);
_KXSocketAddress _KXFromSystem(const sockaddr_storage& system);
