#include "platform/ThreadSignals.h"

#include <csignal>

static constinit thread_local sigset_t before = {};

_KXNoSignals::_KXNoSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
}

_KXNoSignals::~_KXNoSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
