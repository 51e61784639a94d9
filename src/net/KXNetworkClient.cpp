#include <Kobaltrix/KXNetworkClient.h>

#include "net/Connecting.h"
#include "net/Connection.h"
#include "net/StoredBuffers.h"
#include "net/Turn.h"

#include <algorithm>
#include <utility>

// There is only one connection, and its bytes are stored under this key.
static constexpr int key = 0;

struct KXNetworkClient::Members {
    std::unique_ptr<_KXConnection> connection; // null without one
    std::unique_ptr<Connecting> connecting;    // null unless one is being made
    KXNetworkState state = KXNetworkNotConnected;
    Turn turn;
};

KXNetworkClient::KXNetworkClient() : _members(std::make_unique<Members>()) {}

KXNetworkClient::~KXNetworkClient() = default;

// A connection has begun.
void KXNetworkClient::_take(int socket) {
    _KXSocketOwner owner(socket);
    if (const int silence = limits().keepAliveMilliseconds; silence >= 0)
        _KXKeepAlive(socket, std::max(silence / 1000, 1));
    _members->connection = std::make_unique<_KXConnection>(std::move(owner));
    _members->state = KXNetworkConnected;
}

// There is none any more, and this is why.
void KXNetworkClient::_end(KXNetworkState state) {
    _members->connecting.reset();
    _members->state = state;
    if (!connected())
        return;
    _members->connection.reset();
    _leave(key);
}

bool KXNetworkClient::connect(const char* host, int port) {
    // A program that was started without standard input gets descriptor 0 for its first socket, and keeps it.
    if (connected() && _members->connection->socket() == 0)
        _members->connection->release();
    _end(KXNetworkNameUnknown);
    _KXSocketAddress address;
    if (!host || !_KXFindAddress(host, port, address))
        return false;
    _members->state = KXNetworkNobodyThere;
    _KXSocketOwner socket(_KXOpenSocket(address));
    if (socket.get() == -1 || !_KXConnect(socket.get(), address))
        return false;
    _take(socket.release());
    return true;
}

void KXNetworkClient::beginConnecting(const char* host, int port, int milliseconds) {
    if (connected() && _members->connection->socket() == 0)
        _members->connection->release();
    _end(host ? KXNetworkNobodyThere : KXNetworkNameUnknown);
    if (!host || port < 0 || port > 65535)
        return;
    _members->connecting = std::make_unique<Connecting>(host, port, milliseconds);
    poll();
}

void KXNetworkClient::disconnect() { _end(KXNetworkNotConnected); }

bool KXNetworkClient::connected() const { return _members->connection != nullptr; }

KXNetworkState KXNetworkClient::state() const { return _members->state; }

void KXNetworkClient::poll() {
    if (_members->connecting) {
        const KXNetworkState state = _members->connecting->poll();
        _members->state = state;
        if (state == KXNetworkConnected) {
            const int socket = _members->connecting->release();
            _end(KXNetworkConnectionLost); // unless there is memory for it
            _take(socket);
        } else if (state != KXNetworkLookingUp && state != KXNetworkConnecting) {
            _end(state);
        }
    }
    if (connected() && !_members->connection->flush())
        _end(KXNetworkConnectionLost);
    _members->turn.begin(limits());
    _members->turn.add(key);
}

KXNetworkBuffer* KXNetworkClient::receiveNext() {
    while (_members->turn.next() != -1) {
        const _KXReceived received = _receive(true);
        _members->turn.answered(received.message, received.more);
        if (received.message)
            return received.message;
    }
    return nullptr;
}

int KXNetworkClient::send(KXNetworkBuffer* buffer) {
    if (!buffer)
        return -2;
    buffer->appendString(_KXEndOfBuffer, _KXEndOfBufferLength);
    return _send(buffer->_bytes(), buffer->bufferLength());
}

int KXNetworkClient::_send(const void* data, int length) {
    if (!connected())
        return -2;
    int sent = 0;
    if (!_members->connection->send(data, length, limits(), sent))
        _end(KXNetworkConnectionLost);
    return sent;
}

_KXReceived KXNetworkClient::_receive(bool inTurn) {
    if (!connected())
        return {};
    const _KXReceived received = _receiveFrom(*_members->connection, key, inTurn);
    if (received.lost)
        _end(KXNetworkConnectionLost);
    return received;
}

KXNetworkBuffer* KXNetworkClient::receive() { return _receive(false).message; }
