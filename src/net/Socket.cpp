#include "net/Socket.h"

#include "core/ground/LogicClock.h"

#include <algorithm>
#include <cstdint>

bool _KXSendSome(int socket, const char* data, int length, int& sent) {
    int failures = 0;
    for (sent = 0; sent < length;) {
        const int count = _KXSocketCall.send(socket, data + sent, std::min(_KXSocketPiece, length - sent));
        if (count > 0) {
            sent += count;
            failures = 0;
        } else if (count == _KXSocketWouldBlock) {
            break;
        } else if (count == _KXSocketBroken || ++failures == _KXSocketPatience) {
            return false;
        }
    }
    return true;
}

bool _KXSendAll(int socket, const char* data, int length, int retryLimit, int& sent) {
    bool refused = false;
    std::uint64_t firstRefusal = 0;
    for (sent = 0;;) {
        int some = 0;
        const bool usable = _KXSendSome(socket, data + sent, length - sent, some);
        sent += some;
        if (!usable || sent >= length)
            return usable;
        // Spinning would take from the peer, where it runs on the same machine, the time to read.
        _KXAwaitRoom(socket);
        if (retryLimit < 0)
            continue;
        const std::uint64_t now = _KXWorldNanoseconds() / 1'000'000;
        if (!refused)
            firstRefusal = now;
        refused = true;
        if (now - firstRefusal >= static_cast<std::uint64_t>(retryLimit))
            return false;
    }
}
