#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkHandler.h>

#include "net/Connection.h"
#include "net/StoredBuffers.h"

#include <algorithm>
#include <limits>
#include <new>

// No call reads more than this, so that a peer that sends faster than the game reads cannot keep it reading.
// More than a system buffers for a connection by default.
static constexpr int mostPerReceive = 16 * 1024 * 1024;
// In a turn the clock is looked at, and others are asked, after no more than this.
static constexpr int mostInATurn = 64 * 1024;
// Nor does it read on while a message waits and more than this is stored. What the game has not asked for yet
// waits in the system's buffer, and the peer waits when that is full.
static constexpr int mostStored = 64 * 1024;

static constexpr int longestBuffer = std::numeric_limits<int>::max();

_KXNetworkHandler::_KXNetworkHandler() : _storedBuffers(std::make_unique<StoredBuffers>()) {}

_KXNetworkHandler::~_KXNetworkHandler() = default;

void KXNetworkClearStoredBuffer(_KXNetworkHandler* handler, int clientID) {
    if (handler)
        handler->_eraseStoredBuffer(clientID);
}

void _KXNetworkHandler::_eraseStoredBuffer(int clientID) { _storedBuffers->byClientID.erase(clientID); }

// A connection has ended.
void _KXNetworkHandler::_leave(int clientID) {
    if (_limits.clearsStoredBuffers || _storedLength(clientID) == 0)
        _eraseStoredBuffer(clientID);
}

int _KXNetworkHandler::_storedLength(int clientID) const {
    const auto entry = _storedBuffers->byClientID.find(clientID);
    return entry == _storedBuffers->byClientID.end() ? 0 : entry->second.length();
}

char* _KXNetworkHandler::_mergeRecvBufferWithStoredBuffer(int clientID, const char* data, int length,
                                                          int& mergedLength) {
    const int received = data ? std::max(length, 0) : 0;
    const int stored = _storedLength(clientID);
    if (received > longestBuffer - stored)
        throw std::bad_alloc();
    const char* bytes = stored > 0 ? _storedBuffers->byClientID.at(clientID).bytes() : nullptr;
    char* merged = _joinBuffers(bytes, stored, data, received);
    if (!merged)
        throw std::bad_alloc();
    mergedLength = stored + received;
    _eraseStoredBuffer(clientID);
    return merged;
}

KXNetworkBuffer* _KXNetworkHandler::_handleReceivedBuffer(int clientID, const char* data, int length) {
    if (!data || length < 1)
        return nullptr;
    StoredBufferInfo received;
    received.append(data, length);
    received.findMessages(longestBuffer);
    if (!received.hasMessage()) {
        _storedBuffers->byClientID[clientID].append(data, length);
        return nullptr;
    }
    std::unique_ptr<KXNetworkBuffer> message(received.takeMessage());
    if (received.length() > 0)
        _storedBuffers->byClientID[clientID] = std::move(received);
    return message.release();
}

namespace {
enum class Reading { done, interrupted, closed, tooLong };

// Reads until there is nothing more for now, or so many bytes.
Reading readAll(int socket, StoredBufferInfo& stored, int limit, int most) {
    int failures = 0;
    int total = 0;
    bool allowed = stored.findMessages(limit);
    while (allowed && total < most) {
        if (stored.hasMessage() && stored.length() > std::min(limit, mostStored))
            return Reading::done;
        const int count = _KXSocketCall.receive(socket, stored.room(_KXSocketPiece), _KXSocketPiece);
        if (count > 0) {
            stored.added(count);
            allowed = stored.findMessages(limit);
            total += count;
            failures = 0;
            continue;
        }
        if (count == _KXSocketWouldBlock)
            return Reading::done;
        if (count == 0 || ++failures == _KXSocketPatience)
            return Reading::closed;
    }
    return allowed ? Reading::interrupted : Reading::tooLong;
}
} // namespace

// In a turn what a peer has sent before it left is handed out first, message by message.
_KXReceived _KXNetworkHandler::_receiveFrom(_KXConnection& connection, int clientID, bool inTurn) {
    const int limit = _limits.longestMessage < 0 ? longestBuffer : _limits.longestMessage;
    try {
        StoredBufferInfo& stored = _storedBuffers->byClientID[clientID];
        const Reading reading = connection.closed ? Reading::closed
                                                  : readAll(connection.socket(), stored, limit,
                                                            inTurn ? mostInATurn : mostPerReceive);
        connection.closed = reading == Reading::closed;
        _KXReceived received;
        received.message = stored.takeMessage();
        const bool tooLong = reading == Reading::tooLong && !stored.hasMessage();
        received.lost = tooLong || (connection.closed && !(inTurn && stored.hasMessage()));
        received.more = !received.lost && (received.message || reading == Reading::interrupted);
        if (tooLong)
            _eraseStoredBuffer(clientID);
        return received;
    } catch (const std::bad_alloc&) {
        // The peer has sent more than there is memory for: it is disconnected, and the game goes on.
        _eraseStoredBuffer(clientID);
        return {nullptr, true, false};
    }
}
