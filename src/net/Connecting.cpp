#include "net/Connecting.h"

#include "core/ground/LogicClock.h"

#include <algorithm>

static constexpr std::uint64_t nanosecondsPerMillisecond = 1'000'000;

Connecting::Connecting(const char* host, int port, int milliseconds)
    : _host(host), _port(port), _hasEnd(milliseconds >= 0),
      _end(_KXWorldNanoseconds() +
           static_cast<std::uint64_t>(std::max(milliseconds, 0)) * nanosecondsPerMillisecond) {
    const std::vector<_KXSocketAddress> written = _KXReadAddresses(host, port);
    _isFound = !written.empty();
    _addresses.assign(written.begin(), written.end());
}

// Whether it is known which addresses there are.
bool Connecting::_lookUp() {
    if (_isFound)
        return true;
    if (!_lookup.hasBegun() && !_lookup.begin(_host, _port))
        return false;
    if (!_lookup.isDone())
        return false;
    constexpr std::size_t most = 8;
    _addresses.assign(_lookup.addresses().begin(), _lookup.addresses().end());
    _addresses.resize(std::min(_addresses.size(), most));
    _isFound = true;
    return true;
}

// Whether one has come to its end.
bool Connecting::_checkAttempts() {
    for (auto attempt = _attempts.begin(); attempt != _attempts.end();) {
        const _KXConnecting outcome = _KXCheckConnecting(attempt->get());
        if (outcome == _KXConnecting::done) {
            _connected = std::move(*attempt);
            return true;
        }
        attempt = outcome == _KXConnecting::failed ? _attempts.erase(attempt) : attempt + 1;
    }
    return false;
}

void Connecting::_beginAttempts(std::uint64_t now) {
    constexpr std::uint64_t patience = 300 * nanosecondsPerMillisecond;
    while (_connected.get() == -1 && !_addresses.empty() && (_attempts.empty() || now >= _nextAttempt)) {
        const _KXSocketAddress address = _addresses.front();
        _addresses.pop_front();
        _KXSocketOwner attempt(_KXOpenSocket(address));
        if (attempt.get() == -1)
            continue;
        const _KXConnecting outcome = _KXBeginConnecting(attempt.get(), address);
        _nextAttempt = now + patience;
        if (outcome == _KXConnecting::done)
            _connected = std::move(attempt);
        else if (outcome == _KXConnecting::pending)
            _attempts.push_back(std::move(attempt));
    }
}

KXNetworkState Connecting::poll() {
    const std::uint64_t now = _KXWorldNanoseconds();
    const bool isLate = _hasEnd && now >= _end;
    if (!_lookUp())
        return isLate ? KXNetworkTimedOut : KXNetworkLookingUp;
    if (_addresses.empty() && _attempts.empty())
        return KXNetworkNameUnknown;
    if (!_checkAttempts())
        _beginAttempts(now);
    if (_connected.get() != -1)
        return KXNetworkConnected;
    if (_attempts.empty() && _addresses.empty())
        return KXNetworkNobodyThere;
    return isLate ? KXNetworkTimedOut : KXNetworkConnecting;
}

int Connecting::release() { return _connected.release(); }
