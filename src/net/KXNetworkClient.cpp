#include <Kobaltrix/KXNetworkClient.h>

#include "net/Socket.h"
#include "net/StoredBuffers.h"

// There is only one connection, and its bytes are stored under this key.
static constexpr int key = 0;

KXNetworkClient::KXNetworkClient() = default;

KXNetworkClient::~KXNetworkClient() {
    if (_socket >= 0)
        _KXCloseSocket(_socket);
}

bool KXNetworkClient::connect(const char* host, int port) {
    // A program that was started without standard input gets descriptor 0 for its first socket, and keeps it.
    if (_socket != 0)
        disconnect();
    _socket = -1;
    if (!host)
        return false;
    _KXSocketOwner socket(_KXOpenSocket());
    _KXSocketAddress address;
    if (socket.get() == -1 || !_KXFindAddress(host, port, address) || !_KXConnect(socket.get(), address))
        return false;
    _socket = socket.release();
    return true;
}

void KXNetworkClient::disconnect() {
    if (_socket == -1)
        return;
    _KXCloseSocket(_socket);
    _socket = -1;
    _leave(key);
}

bool KXNetworkClient::connected() const { return _socket >= 0; }

int KXNetworkClient::send(KXNetworkBuffer* buffer) {
    if (!buffer)
        return -2;
    buffer->appendString(_KXEndOfBuffer, _KXEndOfBufferLength);
    return _send(buffer->_bytes(), buffer->bufferLength());
}

int KXNetworkClient::_send(const void* data, int length) {
    if (!connected())
        return -2;
    bool lost = false;
    const int sent = _sendTo(_socket, data, length, lost);
    if (lost)
        disconnect();
    return sent;
}

KXNetworkBuffer* KXNetworkClient::receive() {
    if (!connected())
        return nullptr;
    bool lost = false;
    KXNetworkBuffer* message = _receiveFrom(_socket, key, lost);
    if (lost)
        disconnect();
    return message;
}
