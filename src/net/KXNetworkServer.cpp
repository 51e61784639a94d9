#include <Kobaltrix/KXNetworkServer.h>

#include "core/ground/ErrorSlot.h"
#include "net/Connection.h"
#include "net/StoredBuffers.h"
#include "net/Turn.h"
#include "util/KXString.h"

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <set>
#include <utility>

// More than a process may have descriptors.
static constexpr int mostClients = 1 << 20;

struct KXNetworkServer::Members {
    explicit Members(int socket) : listener(socket) {}

    _KXSocketOwner listener;
    _KXSocketAddress own;
    std::vector<std::unique_ptr<_KXConnection>> clients; // by id; null: a free slot
    Turn turn;
    std::set<_KXSocketAddress> refused; // households
};

[[noreturn]] static void fail(const char* message) {
    _KXReportError("%s", message);
    throw std::bad_alloc();
}

KXNetworkServer::KXNetworkServer() { throw std::bad_alloc(); }

KXNetworkServer::KXNetworkServer(const char* address, int port, int maxClients, int, int backlog) {
    _KXSocketAddress own;
    const bool found = _KXFindAddress(address, port, own);
    _KXSocketOwner opened(_KXOpenSocket(own));
    const int listener = opened.get();
    if (listener == -1)
        fail("Unable to intialize server socket");
    _KXMakeNonBlocking(listener);
    if (maxClients < 0 || maxClients > mostClients)
        throw std::bad_alloc();
    _members = std::make_unique<Members>(listener);
    opened.release();
    _members->clients.resize(static_cast<std::size_t>(maxClients));
    if (!found || !_KXBind(listener, own))
        fail("Couldn't bind the socket.");
    if (!_KXListen(listener, backlog))
        fail("Unable to set up the socket to listen");
    _members->own = own;
}

KXNetworkServer::~KXNetworkServer() = default;

int KXNetworkServer::checkForIncomingConnections() {
    constexpr int mostRefused = 1000;
    for (int refused = 0; refused < mostRefused; ++refused) {
        _KXSocketAddress peer;
        _KXSocketOwner socket(_KXAccept(_members->listener.get(), peer));
        if (socket.get() == -1)
            return -1;
        const auto slot = std::find(_members->clients.begin(), _members->clients.end(), nullptr);
        if (slot == _members->clients.end() && !limits().refusesAllWhenFull) {
            disconnectClient(socket.get());
            return -1;
        }
        if (slot == _members->clients.end() || !_admits(peer))
            continue;
        if (const int silence = limits().keepAliveMilliseconds; silence >= 0)
            _KXKeepAlive(socket.get(), std::max(silence / 1000, 1));
        *slot = std::make_unique<_KXConnection>(std::move(socket));
        (*slot)->peer = peer;
        (*slot)->lastSpoken = _members->turn.now();
        return static_cast<int>(slot - _members->clients.begin());
    }
    return -1;
}

bool KXNetworkServer::_admits(const _KXSocketAddress& peer) const {
    const _KXSocketAddress household = _KXHouseholdOf(peer);
    if (_members->refused.contains(household))
        return false;
    const int most = limits().clientsPerAddress;
    return most < 0 ||
           std::count_if(_members->clients.begin(), _members->clients.end(), [&](const auto& client) {
               return client && _KXHouseholdOf(client->peer) == household;
           }) < most;
}

bool KXNetworkServer::_isOverdue(const _KXConnection& client) const {
    const bool isNew = !client.hasSpoken && limits().firstMessageMilliseconds >= 0;
    const int patience = isNew ? limits().firstMessageMilliseconds : limits().idleMilliseconds;
    return patience >= 0 && _members->turn.now() - client.lastSpoken > static_cast<std::uint64_t>(patience);
}

void KXNetworkServer::poll() {
    Turn& turn = _members->turn;
    turn.begin(limits());
    for (int i = 0; i < _slots(); ++i) {
        const int id = (turn.first() + i) % _slots();
        _KXConnection* client = _connectionOf(id);
        if (!client)
            continue;
        if (!client->flush() || _isOverdue(*client))
            disconnectClient(id);
        else
            turn.add(id);
    }
}

KXNetworkBuffer* KXNetworkServer::receiveNext(int* clientID) {
    Turn& turn = _members->turn;
    for (int id; (id = turn.next()) != -1;) {
        const _KXReceived received = _receive(id, true);
        turn.answered(received.message, received.more);
        if (!received.message)
            continue;
        if (clientID)
            *clientID = id;
        return received.message;
    }
    return nullptr;
}

int KXNetworkServer::_slots() const { return static_cast<int>(_members->clients.size()); }

// Null for a free slot and for an id that is no slot's.
_KXConnection* KXNetworkServer::_connectionOf(int clientID) const {
    const auto slot = static_cast<std::size_t>(clientID);
    return clientID >= 0 && slot < _members->clients.size() ? _members->clients[slot].get() : nullptr;
}

bool KXNetworkServer::_validClient(int clientID) const { return _connectionOf(clientID); }

bool KXNetworkServer::isClientConnected(int clientID) const { return _validClient(clientID); }

void KXNetworkServer::disconnectClient(int clientID) {
    if (!_validClient(clientID))
        return;
    _members->clients[static_cast<std::size_t>(clientID)].reset();
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
    _KXConnection* client = _connectionOf(clientID);
    if (!client)
        return -2;
    int sent = 0;
    if (!client->send(data, length, limits(), sent))
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

_KXReceived KXNetworkServer::_receive(int clientID, bool inTurn) {
    _KXConnection* client = _connectionOf(clientID);
    if (!client)
        return {};
    const _KXReceived received = _receiveFrom(*client, clientID, inTurn);
    if (received.message) {
        client->hasSpoken = true;
        client->lastSpoken = _members->turn.now();
    }
    if (received.lost)
        disconnectClient(clientID);
    return received;
}

KXNetworkBuffer* KXNetworkServer::receiveBufferFromClient(int clientID) {
    return _receive(clientID, false).message;
}

const char* KXNetworkServer::clientAddress(int clientID) const {
    return _validClient(clientID) ? KXTempString("%s", _KXAddressText(_members->own).c_str()) : nullptr;
}

const char* KXNetworkServer::peerAddress(int clientID) const {
    const _KXConnection* client = _connectionOf(clientID);
    return client ? KXTempString("%s", _KXAddressText(client->peer).c_str()) : nullptr;
}

std::vector<int> KXNetworkServer::clientIDList() const {
    std::vector<int> ids;
    for (int id = 0; id < _slots(); ++id)
        if (_validClient(id))
            ids.push_back(id);
    return ids;
}

char* KXNetworkServer::IPAddress() const {
    return _members->listener.get() == 0 ? nullptr : _KXCopyForCaller(_KXAddressText(_members->own));
}

bool KXNetworkServer::refuseAddress(const char* address) {
    _KXSocketAddress read;
    if (!address || !_KXReadAddress(address, read))
        return false;
    _members->refused.insert(_KXHouseholdOf(read));
    for (int id = 0; id < _slots(); ++id)
        if (_validClient(id) && _KXHouseholdOf(_connectionOf(id)->peer) == _KXHouseholdOf(read))
            disconnectClient(id);
    return true;
}

bool KXNetworkServer::admitAddress(const char* address) {
    _KXSocketAddress read;
    return address && _KXReadAddress(address, read) && _members->refused.erase(_KXHouseholdOf(read)) != 0;
}

std::vector<std::string> KXNetworkServer::refusedAddresses() const {
    std::vector<std::string> texts;
    for (const _KXSocketAddress& each : _members->refused)
        texts.push_back(_KXHostText(each));
    return texts;
}
