#pragma once

#include_next <sys/socket.h>

#define SO_NOSIGPIPE SO_OOBINLINE // of which the library makes no use
