#include "platform/SocketSignals.h"

#include <sys/socket.h>

void _KXSilenceSocket(int) {}

long _KXSendSilently(int socket, const void* data, std::size_t length) {
    return send(socket, data, length, MSG_NOSIGNAL);
}
