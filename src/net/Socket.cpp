#include "net/Socket.h"

#include "core/ground/LogicClock.h"

#include <algorithm>
#include <cstdint>

bool _KXSendAll(int socket, const char* data, int length, int retryLimit, int& sent) {
    int failures = 0;
    bool refused = false;
    std::uint32_t firstRefusal = 0;
    for (sent = 0; sent < length;) {
        const int count = _KXSocketCall.send(socket, data + sent, std::min(_KXSocketPiece, length - sent));
        if (count > 0) {
            sent += count;
            failures = 0;
        } else if (count == _KXSocketWouldBlock) {
            // Spinning would take from the peer, where it runs on the same machine, the time to read.
            _KXAwaitRoom(socket);
            if (retryLimit < 0)
                continue;
            const std::uint32_t now = _KXTicks();
            if (!refused)
                firstRefusal = now;
            refused = true;
            if (now - firstRefusal >= static_cast<std::uint32_t>(retryLimit))
                return false;
        } else if (count == _KXSocketBroken || ++failures == _KXSocketPatience) {
            return false;
        }
    }
    return true;
}
