#pragma once

#include "net/Socket.h"
#include "platform/NameLookup.h"

#include <Kobaltrix/KXNetworkClient.h>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

/// A connection that is being made while the game goes on.
///
/// The addresses of a name are tried one after the other. The next one is begun when the last has failed or
/// let wait for a moment, and whichever answers first is taken.
class Connecting {
public:
    Connecting(const char* host, int port, int milliseconds);

    /// Goes on, without waiting. @return how far it is; once that is #KXNetworkConnected release() gives the
    /// socket.
    KXNetworkState poll();
    int release();

private:
    bool _lookUp();
    bool _checkAttempts();
    void _beginAttempts(std::uint64_t now);

    std::string _host;
    int _port;
    bool _hasEnd;
    std::uint64_t _end;
    _KXNameLookup _lookup;
    bool _isFound = false;
    std::deque<_KXSocketAddress> _addresses; // not tried yet
    std::vector<_KXSocketOwner> _attempts;
    std::uint64_t _nextAttempt = 0;
    _KXSocketOwner _connected{-1};
};
