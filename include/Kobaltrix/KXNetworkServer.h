#pragma once

#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkHandler.h>

#include <memory>
#include <string>
#include <vector>

/// @file
/// The server of a game: it accepts clients over TCP and exchanges messages with them.

/// Accepts a fixed number of clients and exchanges messages with each.
///
/// A server is polled, once per logic step: checkForIncomingConnections() until it returns -1, then poll(),
/// then receiveNext() until it returns null, which is soon, whatever the clients do. Nothing of that waits. A
/// send does, unless KXNetworkLimits::outgoingBytes is set. Small messages leave at once: TCP_NODELAY is on.
/// A client is known by its id, the number of its slot from 0 on; the next client gets the lowest free one. A
/// peer that closes or breaks its connection never raises a signal.
///
/// A game that strangers can reach says `server.setLimits(KXNetworkLimitsForStrangers())`.
class KX_API KXNetworkServer : public _KXNetworkHandler {
public:
    /// There is no server without a port: always throws std::bad_alloc.
    KXNetworkServer();
    /// Listens for clients.
    /// @param address the machine's own address to listen at, written out or by name; null for all it has of
    ///   IPv4, "::" for all it has of IPv6 and IPv4. A name that has both stands for the one of IPv4.
    /// @param port 0 to 65535; 0 takes a free one, which IPAddress() then tells.
    /// @param maxClients how many clients there may be at a time, 0 to 1048576.
    /// @param option kept for games that pass one; it changes nothing.
    /// @param backlog how many connections may wait to be accepted; the system has its own upper limit.
    /// Throws std::bad_alloc on failure, with a text in KXError() unless memory was exhausted or
    /// @a maxClients is out of range.
    KXNetworkServer(const char* address, int port, int maxClients, int option, int backlog);
    /// Disconnects all clients and stops listening.
    ~KXNetworkServer();

    /// Accepts one of the connections that wait, and closes those in front of it that are refused by their
    /// address. With all slots taken it closes one and returns, and if the number of that one's descriptor
    /// happens to be the id of a client, that client is disconnected, too; with
    /// KXNetworkLimits::refusesAllWhenFull it closes all, 1,000 at most, and nothing else happens.
    /// @return the id of the new client; -1 if there is none.
    int checkForIncomingConnections();
    /// Sends what still waits to leave, disconnects who has broken a limit of time, and lets receiveNext()
    /// begin anew. For once in each logic step.
    void poll();
    /// The next message of any client, for the caller to delete. All clients are asked in turn, one message
    /// each, and after KXNetworkLimits::turnMilliseconds or KXNetworkLimits::turnMessages the rest waits for
    /// the next poll(). A client that has left is disconnected after its last message was handed out.
    /// @param clientID gets the id of the client, if there is a message; may be null.
    /// @return null if there is none, or no more in this turn.
    KXNetworkBuffer* receiveNext(int* clientID);
    /// Disconnects a client. What waits in its store stays there for the next client of that id, unless
    /// KXNetworkLimits::clearsStoredBuffers is set. Does nothing for a free slot.
    void disconnectClient(int clientID);
    /// Disconnects every client.
    void disconnectAllClients();
    /// Whether there is a client of that id. One that has left counts until a send or a receive finds out.
    bool isClientConnected(int clientID) const;

    /// Appends the marker to @a buffer and sends its bytes. The marker stays in it, so that sending the same
    /// buffer again sends the message and an empty one. A failure disconnects the client.
    /// @return how many bytes the system or the queue took, marker included; -2 if there is no client of that
    ///   id (the marker is appended even so) or for null.
    int sendBufferToClient(int clientID, KXNetworkBuffer* buffer);
    /// Sends to every slot in turn, as sendBufferToClient() does, taken or not. Each appends a marker: the
    /// client of slot k gets the message and k empty messages after it.
    void sendBufferToAllClients(KXNetworkBuffer* buffer);
    /// Reads what a client has sent, 16 MB at most and none while 64 KB of messages wait, and returns the
    /// next complete message, for the caller to delete; null if there is none, or no client of that id. A
    /// message may be empty. A client that has left is disconnected; then only the first of the messages that
    /// were still waiting is returned. A loop around it needs a bound: see receiveNext().
    KXNetworkBuffer* receiveBufferFromClient(int clientID);

    /// The address the server listens at as "address:port", the same for every client; null if there is no
    /// client of that id. A temporary string.
    const char* clientAddress(int clientID) const;
    /// Where a client comes from, as "192.0.2.1:50123" or "[2001:db8::1]:50123"; null if there is no client
    /// of that id. A temporary string.
    const char* peerAddress(int clientID) const;
    /// The ids of all clients, ascending.
    std::vector<int> clientIDList() const;
    /// The address the server listens at as "address:port", "0.0.0.0" for all that the machine has; null if
    /// its descriptor is 0. The caller frees the result with free().
    char* IPAddress() const;

    /// Refuses who comes from an address, and disconnects who has. Of IPv6 the first half of the address
    /// counts.
    /// @param address as peerAddress() gives it, or without a port.
    /// @return whether it is an address.
    bool refuseAddress(const char* address);
    /// Takes an address off the list of those that are refused. @return whether it was on it.
    bool admitAddress(const char* address);
    /// The addresses that are refused, without ports, for a game that keeps them in a file.
    std::vector<std::string> refusedAddresses() const;

    KX_LIBRARY_ONLY
    KX_INTERNAL bool _validClient(int clientID) const;
    KX_INTERNAL int _sendBufferToClient(int clientID, const void* data, int length);
    KX_INTERNAL void _sendBufferToAllClients(const void* data, int length);

private:
    struct Members;

    KX_INTERNAL int _slots() const;
    KX_INTERNAL _KXConnection* _connectionOf(int clientID) const;
    KX_INTERNAL bool _admits(const _KXSocketAddress& peer) const;
    KX_INTERNAL bool _isOverdue(const _KXConnection& connection) const;
    KX_INTERNAL _KXReceived _receive(int clientID, bool inTurn);

    std::unique_ptr<Members> _members;
};
