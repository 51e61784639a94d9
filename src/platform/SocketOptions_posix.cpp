#include "platform/SocketOptions.h"

#include <netinet/tcp.h>
#include <sys/socket.h>

constinit const int _KXKeepAliveTime = TCP_KEEPIDLE;

void _KXSilenceSocket(int) {}

long _KXSendSilently(int socket, const void* data, std::size_t length) {
    return send(socket, data, length, MSG_NOSIGNAL);
}
