#pragma once

#include "platform/SocketAddress.h"

// TCP over IPv4 and IPv6 as the system has it. A socket is the system's number for it, -1 for none. Programs
// started by the game inherit none, and a peer that closes its connection raises no signal.

/// A socket for an address like this one.
int _KXOpenSocket(const _KXSocketAddress& address = {});
void _KXCloseSocket(int socket);
/// Sets the status flags of a socket to non-blocking alone.
void _KXMakeNonBlocking(int socket);
/// Has the system ask whether the peer is still there after so many seconds of silence, and give it up when
/// it does not answer for about as long.
void _KXKeepAlive(int socket, int seconds);

/// Gives a socket an address of this machine, also while the system remembers connections of one that had it
/// before. Port 0 becomes a free one. At :: clients of IPv4 are welcome, too.
bool _KXBind(int socket, _KXSocketAddress& address);
/// Has a bound socket listen, with up to @a backlog connections waiting.
bool _KXListen(int socket, int backlog);
/// Accepts a connection: its socket, non-blocking, and where it comes from; -1 if there is none or it cannot
/// be accepted now.
int _KXAccept(int listener, _KXSocketAddress& peer);

/// How far a connection has come.
enum class _KXConnecting { pending, done, failed };
/// Begins to connect, and makes the socket non-blocking. A connection without another end has failed:
/// searching a port that nobody listens at for a local client, the system may give it that very port and
/// connect it to itself.
_KXConnecting _KXBeginConnecting(int socket, const _KXSocketAddress& address);
/// Asks about one that was pending.
_KXConnecting _KXCheckConnecting(int socket);
/// Connects, waiting for the outcome.
bool _KXConnect(int socket, const _KXSocketAddress& address);

/// Why a socket has not sent or received anything.
enum _KXSocketFailure : int {
    _KXSocketWouldBlock = -1,  ///< There is nothing to read, or no room to write, for now.
    _KXSocketInterrupted = -2, ///< It passes by itself: a signal, or the system is short of memory.
    _KXSocketBroken = -3       ///< Anything else.
};
/// What an error number of the system means here.
_KXSocketFailure _KXSocketFailureOf(int error);

/// Sends what the system takes at once: how many bytes, or a _KXSocketFailure.
int _KXSendBytes(int socket, const void* data, int length);
/// Receives what is there: how many bytes, 0 if the peer has closed the connection, or a _KXSocketFailure.
int _KXReceiveBytes(int socket, void* data, int length);
/// Sleeps until the peer has read something, for a moment at most.
void _KXAwaitRoom(int socket);
