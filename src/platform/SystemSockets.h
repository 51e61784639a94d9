#pragma once

// The system's own sockets, whose names are much the same everywhere.
#ifdef _WIN32
#include <winsock2.h>

#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#endif

/// To be called before any other call; where the system wants to be told that a program uses sockets, it is.
void _KXStartSockets();
