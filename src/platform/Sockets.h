#pragma once

#include <cstdint>
#include <string>

// TCP over IPv4 as the system has it. A socket is the system's number for it, -1 for none. Programs started
// by the game inherit none, and a peer that closes its connection raises no signal.

/// An address of the network and a port.
struct _KXSocketAddress {
    std::uint32_t host = 0; ///< In the order of the network; 0 is every address this machine has.
    std::uint16_t port = 0; ///< A plain number.

    bool operator==(const _KXSocketAddress&) const = default;
};

/// Looks a name or a dotted address up; null stands for every address of this machine. False if it is unknown
/// or has no IPv4 address, or if the port is none.
bool _KXFindAddress(const char* host, int port, _KXSocketAddress& address);
/// An address as "192.0.2.1:80".
std::string _KXAddressText(_KXSocketAddress address);

int _KXOpenSocket();
void _KXCloseSocket(int socket);
/// Sets the status flags of a socket to non-blocking alone.
void _KXMakeNonBlocking(int socket);

/// Gives a socket an address of this machine, also while the system remembers connections of one that had it
/// before. Port 0 becomes a free one.
bool _KXBind(int socket, _KXSocketAddress& address);
/// Has a bound socket listen, with up to @a backlog connections waiting.
bool _KXListen(int socket, int backlog);
/// Accepts a connection: its socket, non-blocking; -1 if there is none or it cannot be accepted now.
int _KXAccept(int listener);
/// Connects, waiting for the outcome, and makes the socket non-blocking. A connection without another end is
/// none: searching a port that nobody listens at for a local client, the system may give it that very port
/// and connect it to itself.
bool _KXConnect(int socket, _KXSocketAddress address);

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
