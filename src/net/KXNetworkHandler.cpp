#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkHandler.h>

#include "net/Socket.h"
#include "net/StoredBuffers.h"

#include <algorithm>
#include <limits>
#include <new>

// No call reads more than this, so that a peer that sends faster than the game reads cannot keep it reading.
// More than a system buffers for a connection by default.
static constexpr int mostPerReceive = 16 * 1024 * 1024;
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
    if (_clearsStoredBuffers || _storedLength(clientID) == 0)
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

int _KXNetworkHandler::_sendTo(int socket, const void* data, int length, bool& lost) const {
    lost = false;
    if (!data || length < 1)
        return 0;
    int sent = 0;
    lost = !_KXSendAll(socket, static_cast<const char*>(data), length, _sendRetryLimit, sent);
    return sent;
}

namespace {
enum class Reading { done, closed, tooLong };

// Reads until there is nothing more for now.
Reading readAll(int socket, StoredBufferInfo& stored, int limit) {
    int failures = 0;
    int total = 0;
    bool allowed = stored.findMessages(limit);
    while (allowed && total < mostPerReceive) {
        if (stored.hasMessage() && stored.length() > std::min(limit, mostStored))
            break;
        const int count = _KXSocketCall.receive(socket, stored.room(_KXSocketPiece), _KXSocketPiece);
        if (count > 0) {
            stored.added(count);
            allowed = stored.findMessages(limit);
            total += count;
            failures = 0;
            continue;
        }
        if (count == _KXSocketWouldBlock)
            break;
        if (count == 0 || ++failures == _KXSocketPatience)
            return Reading::closed;
    }
    return allowed ? Reading::done : Reading::tooLong;
}
} // namespace

KXNetworkBuffer* _KXNetworkHandler::_receiveFrom(int socket, int clientID, bool& lost) {
    try {
        StoredBufferInfo& stored = _storedBuffers->byClientID[clientID];
        const Reading reading = readAll(socket, stored, _storedBufferLimit);
        KXNetworkBuffer* message = stored.takeMessage();
        const bool tooLong = reading == Reading::tooLong && !stored.hasMessage();
        lost = tooLong || reading == Reading::closed;
        if (tooLong)
            _eraseStoredBuffer(clientID);
        return message;
    } catch (const std::bad_alloc&) {
        // The peer has sent more than there is memory for: it is disconnected, and the game goes on.
    }
    lost = true;
    _eraseStoredBuffer(clientID);
    return nullptr;
}
