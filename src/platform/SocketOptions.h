#pragma once

#include <cstddef>

/// Prepares a socket for _KXSendSilently().
void _KXSilenceSocket(int socket);

/// send() without the signal that it raises by default when the peer has closed the connection.
long _KXSendSilently(int socket, const void* data, std::size_t length);

/// The option of TCP that takes the seconds of silence after which the system asks whether the peer is there.
extern const int _KXKeepAliveTime;
