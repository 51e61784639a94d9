#pragma once

#include_next <netinet/tcp.h>

#define TCP_KEEPALIVE TCP_KEEPIDLE
