#pragma once

#include <cstddef>
#include <sys/types.h>

/// Prepares a socket for _KXSendSilently().
void _KXSilenceSocket(int socket);

/// send() without the signal that it raises by default when the peer has closed the connection.
ssize_t _KXSendSilently(int socket, const void* data, std::size_t length);
