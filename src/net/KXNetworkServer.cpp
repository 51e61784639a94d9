#include <Kobaltrix/KXNetworkServer.h>

#include "core/ground/ErrorSlot.h"
#include "net/Socket.h"
#include "net/StoredBuffers.h"
#include "util/KXString.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <new>

// More than a process may have descriptors.
static constexpr int mostClients = 1 << 20;

// Room for an address, a colon and a port.
static constexpr int addressTextSize = INET_ADDRSTRLEN + 12;

[[noreturn]] static void fail(const char* message) {
    _KXReportError("%s", message);
    throw std::bad_alloc();
}

KXNetworkServer::KXNetworkServer() : _port(0), _backlog(0), _option(0), _maxClients(0) {
    throw std::bad_alloc();
}

KXNetworkServer::KXNetworkServer(const char* address, int port, int maxClients, int option, int backlog)
    : _port(port), _backlog(backlog), _option(option), _maxClients(maxClients) {
    _KXSocketOwner listener(_KXOpenSocket());
    if (listener.get() == -1)
        fail("Unable to intialize server socket");
    _KXMakeNonBlocking(listener.get());
    _makeTables();
    _listen(listener.get(), address);
    _socket = listener.release();
}

void KXNetworkServer::_makeTables() {
    if (_maxClients < 0 || _maxClients > mostClients)
        throw std::bad_alloc();
    const auto slots = static_cast<std::size_t>(_maxClients);
    _clientSockets = std::make_unique<int32_t[]>(slots);
    _clientIDs = std::make_unique<int32_t[]>(slots);
    std::fill_n(_clientSockets.get(), slots, -1);
    std::fill_n(_clientIDs.get(), slots, -1);
    _address = std::make_unique<sockaddr_in>();
    _clientAddresses.reset(new (std::nothrow) sockaddr_in[slots]());
    if (!_clientAddresses)
        fail("Couldn't create connection address storage.\n");
}

void KXNetworkServer::_listen(int listener, const char* address) {
    // A server that is started again need not wait until the connections of the last one are forgotten.
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (!_KXFindAddress(address, _port, *_address) ||
        bind(listener, reinterpret_cast<const sockaddr*>(_address.get()), sizeof(sockaddr_in)) != 0)
        fail("Couldn't bind the socket.");
    if (listen(listener, _backlog) != 0)
        fail("Unable to set up the socket to listen");
    socklen_t length = sizeof(sockaddr_in);
    if (_port == 0 && getsockname(listener, reinterpret_cast<sockaddr*>(_address.get()), &length) == 0)
        _port = ntohs(_address->sin_port);
}

KXNetworkServer::~KXNetworkServer() {
    disconnectAllClients();
    if (_socket != -1)
        close(_socket);
}

int KXNetworkServer::checkForIncomingConnections() {
    sockaddr_in address = {};
    _KXSocketOwner client(_KXAccept(_socket, address));
    if (client.get() == -1)
        return -1;
    int32_t* const end = _clientSockets.get() + _maxClients;
    int32_t* const slot = std::find(_clientSockets.get(), end, -1);
    if (slot == end) {
        disconnectClient(client.get());
        return -1;
    }
    const int id = static_cast<int>(slot - _clientSockets.get());
    *slot = client.release();
    _clientIDs[static_cast<std::size_t>(id)] = id;
    _clientAddresses[static_cast<std::size_t>(id)] = address;
    return id;
}

// The id equal to the number of slots passes for one of a slot that is always free.
bool KXNetworkServer::_inTables(int clientID) const { return clientID >= 0 && clientID < _maxClients; }

bool KXNetworkServer::_validClient(int clientID) const {
    return _inTables(clientID) && _clientSockets[static_cast<std::size_t>(clientID)] != -1;
}

bool KXNetworkServer::isClientConnected(int clientID) const { return _validClient(clientID); }

void KXNetworkServer::disconnectClient(int clientID) {
    if (!_inTables(clientID))
        return;
    _clientIDs[static_cast<std::size_t>(clientID)] = -1;
    int32_t& socket = _clientSockets[static_cast<std::size_t>(clientID)];
    if (socket == -1)
        return;
    close(socket);
    socket = -1;
    _leave(clientID);
}

void KXNetworkServer::disconnectAllClients() {
    for (int id = 0; id < _maxClients; ++id)
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
    const int sent = _sendTo(_clientSockets[static_cast<std::size_t>(clientID)], data, length, lost);
    if (lost)
        disconnectClient(clientID);
    return sent;
}

void KXNetworkServer::sendBufferToAllClients(KXNetworkBuffer* buffer) {
    for (int id = 0; id < _maxClients; ++id)
        sendBufferToClient(id, buffer);
}

void KXNetworkServer::_sendBufferToAllClients(const void* data, int length) {
    for (int id = 0; id < _maxClients; ++id)
        _sendBufferToClient(id, data, length);
}

KXNetworkBuffer* KXNetworkServer::receiveBufferFromClient(int clientID) {
    if (!_validClient(clientID))
        return nullptr;
    bool lost = false;
    KXNetworkBuffer* message =
        _receiveFrom(_clientSockets[static_cast<std::size_t>(clientID)], clientID, lost);
    if (lost)
        disconnectClient(clientID);
    return message;
}

const char* KXNetworkServer::clientAddress(int clientID) const {
    if (!_validClient(clientID))
        return nullptr;
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &_address->sin_addr, text, sizeof text);
    return KXTempString("%s:%d", text, _port);
}

std::vector<int> KXNetworkServer::clientIDList() const {
    std::vector<int> ids;
    std::copy_if(_clientIDs.get(), _clientIDs.get() + _maxClients, std::back_inserter(ids),
                 [](int id) { return id != -1; });
    return ids;
}

char* KXNetworkServer::IPAddress() const {
    if (_socket == 0)
        return nullptr;
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &_address->sin_addr, text, sizeof text);
    char* result = _KXMakeString(addressTextSize);
    if (result)
        std::snprintf(result, addressTextSize, "%s:%d", text, _port);
    return result;
}
