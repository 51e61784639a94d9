#pragma once

#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkHandler.h>

#include <stdint.h>

#include <vector>

/// @file
/// The server of a game: it accepts clients over TCP (IPv4) and exchanges messages with them.

/// Accepts a fixed number of clients and exchanges messages with each.
///
/// A server is polled, typically once per logic step: checkForIncomingConnections() until it returns -1, then
/// for every id in clientIDList() receiveBufferFromClient() until it returns null, or for a number of
/// messages. Both return at once; a send waits until the system has taken all of its bytes (see
/// setSendRetryLimit()). Small messages leave at once: TCP_NODELAY is on. A client is known by its id, the
/// number of its slot from 0 on; the next client gets the lowest free one. A peer that closes or breaks its
/// connection never raises a signal.
///
/// For a game that strangers can reach see setStoredBufferLimit(), setSendRetryLimit() and
/// setClearsStoredBuffers().
class KX_API KXNetworkServer : public _KXNetworkHandler {
public:
    /// There is no server without a port: always throws std::bad_alloc.
    KXNetworkServer();
    /// Listens for clients.
    /// @param address name or dotted IPv4 address of the machine's own to listen at; null for all it has.
    /// @param port 0 to 65535; 0 takes a free one, which IPAddress() then tells.
    /// @param maxClients how many clients there may be at a time, 0 to 1048576.
    /// @param option kept for games that pass one; it changes nothing.
    /// @param backlog how many connections may wait to be accepted; the system has its own upper limit.
    /// Throws std::bad_alloc on failure, with a text in KXError() unless memory was exhausted or
    /// @a maxClients is out of range.
    KXNetworkServer(const char* address, int port, int maxClients, int option, int backlog);
    /// Disconnects all clients and stops listening.
    ~KXNetworkServer();

    /// Accepts one of the connections that wait. With all slots taken it is closed, and if the number of its
    /// descriptor happens to be the id of a client, that client is disconnected, too.
    /// @return the id of the new client; -1 if there is none.
    int checkForIncomingConnections();
    /// Disconnects a client. What waits in its store stays there for the next client of that id, unless
    /// setClearsStoredBuffers() is on. Does nothing for a free slot.
    void disconnectClient(int clientID);
    /// Disconnects every client.
    void disconnectAllClients();
    /// Whether there is a client of that id. One that has left counts until a send or a receive finds out.
    bool isClientConnected(int clientID) const;

    /// Appends the marker to @a buffer and sends its bytes. The marker stays in it, so that sending the same
    /// buffer again sends the message and an empty one. A failure disconnects the client.
    /// @return how many bytes the system took, marker included; -2 if there is no client of that id (the
    ///   marker is appended even so) or for null.
    int sendBufferToClient(int clientID, KXNetworkBuffer* buffer);
    /// Sends to every slot in turn, as sendBufferToClient() does, taken or not. Each appends a marker: the
    /// client of slot k gets the message and k empty messages after it.
    void sendBufferToAllClients(KXNetworkBuffer* buffer);
    /// Reads what a client has sent, 16 MB at most and none while 64 KB of messages wait, and returns
    /// the next complete message, for the caller to delete; null if there is none, or no client of that id. A
    /// message may be empty. A client that has left is disconnected; then only the first of the messages that
    /// were still waiting is returned.
    KXNetworkBuffer* receiveBufferFromClient(int clientID);

    /// The address the server listens at as "address:port", the same for every client; null if there is no
    /// client of that id. A temporary string.
    const char* clientAddress(int clientID) const;
    /// The ids of all clients, ascending.
    std::vector<int> clientIDList() const;
    /// The address the server listens at as "address:port", "0.0.0.0" for all that the machine has; null if
    /// its descriptor is 0. The caller frees the result with free().
    char* IPAddress() const;

    // Used by the library itself.
    KX_INTERNAL bool _validClient(int clientID) const;
    KX_INTERNAL int _sendBufferToClient(int clientID, const void* data, int length);
    KX_INTERNAL void _sendBufferToAllClients(const void* data, int length);

private:
    KX_INTERNAL int _slots() const { return static_cast<int>(_clientSockets.size()); }
    KX_INTERNAL int _socketOf(int clientID) const;

    int32_t _socket = -1;
    uint32_t _host = 0; // where it listens, in the order of the network
    uint16_t _port = 0;
    std::vector<int32_t> _clientSockets; // by id; -1: a free slot
};
