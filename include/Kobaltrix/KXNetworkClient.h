#pragma once

#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkHandler.h>

#include <memory>

/// @file
/// The client of a game: it connects to one server over TCP and exchanges messages with it.

/// How it stands with the connection of a KXNetworkClient. The last four tell why there is none.
enum KXNetworkState : int {
    KXNetworkNotConnected = 0, ///< Nothing was tried yet, or KXNetworkClient::disconnect() was called.
    KXNetworkLookingUp,        ///< The system asks for the address of the name.
    KXNetworkConnecting,       ///< The server has not answered yet.
    KXNetworkConnected,
    KXNetworkNameUnknown,   ///< Nobody knows the name.
    KXNetworkNobodyThere,   ///< The machine cannot be reached, or nobody listens at the port.
    KXNetworkTimedOut,      ///< Nobody answered in the time there was.
    KXNetworkConnectionLost ///< There was a connection, and it has ended or broken.
};

/// Connects to a KXNetworkServer and exchanges messages with it.
///
/// A client is polled, once per logic step: poll(), then receiveNext() until it returns null, which is soon,
/// whatever the server does. Nothing of that waits. A send does, unless KXNetworkLimits::outgoingBytes is
/// set, and connect() does; beginConnecting() does not. Small messages leave at once: TCP_NODELAY is on. A
/// server that closes or breaks the connection never raises a signal.
class KX_API KXNetworkClient : public _KXNetworkHandler {
public:
    /// A client that is not connected.
    KXNetworkClient();
    /// Disconnects.
    ~KXNetworkClient();

    /// Connects, and waits until that has succeeded or failed, which may take minutes. An earlier connection
    /// is closed first, but for one whose descriptor is 0: that is left open.
    /// @param host name, or an address of IPv4 or IPv6 as it is written out. Of a name its first address of
    ///   IPv4 is taken, or else its first. @param port 1 to 65535.
    /// @return false if the name is unknown or null, or nobody answers there.
    bool connect(const char* host, int port);
    /// Begins to connect, and returns at once; poll() goes on with it, and state() tells how it stands. An
    /// earlier connection is closed as connect() does. All addresses of a name are tried. A name is looked up
    /// in a thread of its own; where that is given up (by disconnect(), the time, or the end of the client)
    /// the thread ends when the system has answered it, and touches nothing of the game until then.
    /// @param host as for connect(). @param port 1 to 65535.
    /// @param milliseconds after which it is given up; negative for as long as the system tries.
    void beginConnecting(const char* host, int port, int milliseconds = 10000);
    /// Closes the connection, or gives up the one that is being made. What waits in the store stays there and
    /// is put in front of what the next server sends, unless KXNetworkLimits::clearsStoredBuffers is set.
    void disconnect();
    /// Whether there is a connection. One that the server has closed counts until a send or a receive finds
    /// out.
    bool connected() const;
    /// How it stands with the connection.
    KXNetworkState state() const;

    /// Goes on with connecting, sends what still waits to leave, and lets receiveNext() begin anew. For once
    /// in each logic step.
    void poll();
    /// The next message, for the caller to delete. After KXNetworkLimits::turnMilliseconds or
    /// KXNetworkLimits::turnMessages the rest waits for the next poll(). A server that has closed the
    /// connection is disconnected after its last message was handed out.
    /// @return null if there is none, or no more in this turn.
    KXNetworkBuffer* receiveNext();

    /// Appends the marker to @a buffer and sends its bytes. The marker stays in it, so that sending the same
    /// buffer again sends the message and an empty one. A failure disconnects.
    /// @return how many bytes the system or the queue took, marker included; -2 if not connected (the marker
    ///   is appended even so) or for null.
    int send(KXNetworkBuffer* buffer);
    /// Reads what the server has sent, 16 MB at most and none while 64 KB of messages wait, and returns the
    /// next complete message, for the caller to delete; null if there is none, or no connection. A message
    /// may be empty. A server that has closed the connection is disconnected; then only the first of the
    /// messages that were still waiting is returned. A loop around it needs a bound: see receiveNext().
    KXNetworkBuffer* receive();

    KX_LIBRARY_ONLY
    KX_INTERNAL int _send(const void* data, int length);

private:
    struct Members;

    KX_INTERNAL void _end(KXNetworkState state);
    KX_INTERNAL void _take(int socket);
    KX_INTERNAL _KXReceived _receive(bool inTurn);

    std::unique_ptr<Members> _members;
};
