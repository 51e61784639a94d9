#pragma once

#include "platform/SocketAddress.h"

#include <memory>

/// What looks names up; may take long. Tests put slow ones in.
inline constinit decltype(&_KXFindAddresses) _KXLookUp = _KXFindAddresses;

/// Looks a name up in a thread of its own, for the system's call waits for other machines.
///
/// There is no ending such a call. One that nobody waits for any more runs until it has its answer, and its
/// thread touches nothing but what belongs to it.
class _KXNameLookup {
public:
    /// Begins, unless as many as are good for a game are under way already.
    bool begin(const std::string& host, int port);
    bool hasBegun() const { return _answer != nullptr; }
    bool isDone() const;
    /// Once it is done; none for a name that nobody knows.
    const std::vector<_KXSocketAddress>& addresses() const;

    struct Answer;

private:
    std::shared_ptr<Answer> _answer;
};
