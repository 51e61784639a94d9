#include "platform/SocketOptions.h"

#include <netinet/tcp.h>
#include <sys/socket.h>

constinit const int _KXKeepAliveTime = TCP_KEEPALIVE;

void _KXSilenceSocket(int socket) {
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
}

long _KXSendSilently(int socket, const void* data, std::size_t length) {
    return send(socket, data, length, 0);
}
