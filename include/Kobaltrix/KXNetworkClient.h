#pragma once

#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkHandler.h>

#include <stdint.h>

/// @file
/// The client of a game: it connects to one server over TCP (IPv4) and exchanges messages with it.

/// Connects to a KXNetworkServer and exchanges messages with it.
///
/// A client is polled, typically once per logic step: receive() until it returns null, which it does at once.
/// A send waits until the system has taken all of its bytes (see setSendRetryLimit()). Small messages leave
/// at once: TCP_NODELAY is on. A server that closes or breaks the connection never raises a signal.
class KX_API KXNetworkClient : public _KXNetworkHandler {
public:
    /// A client that is not connected.
    KXNetworkClient();
    /// Disconnects.
    ~KXNetworkClient();

    /// Connects, and waits until that has succeeded or failed. An earlier connection is closed first,
    /// but for one whose descriptor is 0: that is left open.
    /// @param host name or dotted IPv4 address. @param port 1 to 65535.
    /// @return false if the name is unknown or null, or nobody answers there.
    bool connect(const char* host, int port);
    /// Closes the connection. What waits in the store stays there and is put in front of what the next server
    /// sends, unless setClearsStoredBuffers() is on.
    void disconnect();
    /// Whether there is a connection. One that the server has closed counts until a send or a receive finds
    /// out.
    bool connected() const;

    /// Appends the marker to @a buffer and sends its bytes. The marker stays in it, so that sending the same
    /// buffer again sends the message and an empty one. A failure disconnects.
    /// @return how many bytes the system took, marker included; -2 if not connected (the marker is appended
    ///   even so) or for null.
    int send(KXNetworkBuffer* buffer);
    /// Reads what the server has sent, 16 MB at most and none while 64 KB of messages wait, and returns
    /// the next complete message, for the caller to delete; null if there is none, or no connection. A
    /// message may be empty. A server that has closed the connection is disconnected; then only the first of
    /// the messages that were still waiting is returned.
    KXNetworkBuffer* receive();

    // Used by the library itself.
    KX_INTERNAL int _send(const void* data, int length);

private:
    int32_t _socket = -1;
};
