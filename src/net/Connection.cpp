#include "net/Connection.h"

#include <algorithm>
#include <new>

bool _KXConnection::send(const void* bytes, int length, const KXNetworkLimits& limits, int& sent) {
    sent = 0;
    if (!bytes || length < 1)
        return true;
    const auto* data = static_cast<const char*>(bytes);
    if (limits.outgoingBytes < 0) {
        int earlier = 0;
        const bool left =
            _KXSendAll(socket(), _outgoing.bytes(), waiting(), limits.sendRetryMilliseconds, earlier);
        _outgoing.drop(earlier);
        return left && _KXSendAll(socket(), data, length, limits.sendRetryMilliseconds, sent);
    }
    if (!flush() || (waiting() == 0 && !_KXSendSome(socket(), data, length, sent)))
        return false;
    if (sent == length)
        return true;
    if (waiting() > limits.outgoingBytes || !_queue(data + sent, length - sent))
        return false;
    sent = length;
    return true;
}

bool _KXConnection::_queue(const char* data, int length) {
    try {
        _outgoing.append(data, length);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool _KXConnection::flush() {
    // A peer that has let much wait and then reads at once does not keep the game sending.
    constexpr int mostAtATime = 256 * 1024;
    int sent = 0;
    const bool usable = _KXSendSome(socket(), _outgoing.bytes(), std::min(waiting(), mostAtATime), sent);
    _outgoing.drop(sent);
    return usable;
}
