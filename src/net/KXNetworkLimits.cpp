#include <Kobaltrix/KXNetworkLimits.h>

KXNetworkLimits KXNetworkLimitsForStrangers() {
    KXNetworkLimits limits;
    limits.longestMessage = 64 * 1024;
    limits.outgoingBytes = 1024 * 1024;
    limits.sendRetryMilliseconds = 10;
    limits.keepAliveMilliseconds = 20'000;
    limits.clearsStoredBuffers = true;
    limits.clientsPerAddress = 4;
    limits.firstMessageMilliseconds = 10'000;
    limits.idleMilliseconds = 60'000;
    limits.refusesAllWhenFull = true;
    return limits;
}
