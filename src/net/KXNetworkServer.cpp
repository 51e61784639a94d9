#include <Kobaltrix/KXNetworkServer.h>

#include "core/ground/ErrorSlot.h"
#include "net/Socket.h"
#include "net/StoredBuffers.h"

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <cstring>
#include <new>

// More than a process may have descriptors.
static constexpr int mostClients = 1 << 20;

[[noreturn]] static void fail(const char* message) {
    _KXReportError("%s", message);
    throw std::bad_alloc();
}

KXNetworkServer::KXNetworkServer() { throw std::bad_alloc(); }

KXNetworkServer::KXNetworkServer(const char* address, int port, int maxClients, int, int backlog) {
    _KXSocketOwner listener(_KXOpenSocket());
    if (listener.get() == -1)
        fail("Unable to intialize server socket");
    _KXMakeNonBlocking(listener.get());
    if (maxClients < 0 || maxClients > mostClients)
        throw std::bad_alloc();
    _clientSockets.assign(static_cast<std::size_t>(maxClients), -1);
    _KXSocketAddress own;
    if (!_KXFindAddress(address, port, own) || !_KXBind(listener.get(), own))
        fail("Couldn't bind the socket.");
    if (!_KXListen(listener.get(), backlog))
        fail("Unable to set up the socket to listen");
    _host = own.host;
    _port = own.port;
    _socket = listener.release();
}

KXNetworkServer::~KXNetworkServer() {
    disconnectAllClients();
    if (_socket != -1)
        _KXCloseSocket(_socket);
}

int KXNetworkServer::checkForIncomingConnections() {
    _KXSocketOwner client(_KXAccept(_socket));
    if (client.get() == -1)
        return -1;
    const auto slot = std::find(_clientSockets.begin(), _clientSockets.end(), -1);
    if (slot == _clientSockets.end()) {
        disconnectClient(client.get());
        return -1;
    }
    *slot = client.release();
    return static_cast<int>(slot - _clientSockets.begin());
}

// -1 for a free slot and for an id that is no slot's.
int KXNetworkServer::_socketOf(int clientID) const {
    const auto slot = static_cast<std::size_t>(clientID);
    return clientID >= 0 && slot < _clientSockets.size() ? _clientSockets[slot] : -1;
}

bool KXNetworkServer::_validClient(int clientID) const { return _socketOf(clientID) != -1; }

bool KXNetworkServer::isClientConnected(int clientID) const { return _validClient(clientID); }

void KXNetworkServer::disconnectClient(int clientID) {
    if (!_validClient(clientID))
        return;
    _KXCloseSocket(_socketOf(clientID));
    _clientSockets[static_cast<std::size_t>(clientID)] = -1;
    _leave(clientID);
}

void KXNetworkServer::disconnectAllClients() {
    for (int id = 0; id < _slots(); ++id)
        disconnectClient(id);
}

int KXNetworkServer::sendBufferToClient(int clientID, KXNetworkBuffer* buffer) {
    if (!buffer)
        return -2;
    buffer->appendString(_KXEndOfBuffer, _KXEndOfBufferLength);
    return _sendBufferToClient(clientID, buffer->_bytes(), buffer->bufferLength());
}

int KXNetworkServer::_sendBufferToClient(int clientID, const void* data, int length) {
    if (!_validClient(clientID))
        return -2;
    bool lost = false;
    const int sent = _sendTo(_socketOf(clientID), data, length, lost);
    if (lost)
        disconnectClient(clientID);
    return sent;
}

void KXNetworkServer::sendBufferToAllClients(KXNetworkBuffer* buffer) {
    for (int id = 0; id < _slots(); ++id)
        sendBufferToClient(id, buffer);
}

void KXNetworkServer::_sendBufferToAllClients(const void* data, int length) {
    for (int id = 0; id < _slots(); ++id)
        _sendBufferToClient(id, data, length);
}

KXNetworkBuffer* KXNetworkServer::receiveBufferFromClient(int clientID) {
    if (!_validClient(clientID))
        return nullptr;
    bool lost = false;
    KXNetworkBuffer* message = _receiveFrom(_socketOf(clientID), clientID, lost);
    if (lost)
        disconnectClient(clientID);
    return message;
}

const char* KXNetworkServer::clientAddress(int clientID) const {
    return _validClient(clientID) ? KXTempString("%s", _KXAddressText({_host, _port}).c_str()) : nullptr;
}

std::vector<int> KXNetworkServer::clientIDList() const {
    std::vector<int> ids;
    for (int id = 0; id < _slots(); ++id)
        if (_validClient(id))
            ids.push_back(id);
    return ids;
}

char* KXNetworkServer::IPAddress() const {
    return _socket == 0 ? nullptr : strdup(_KXAddressText({_host, _port}).c_str());
}
