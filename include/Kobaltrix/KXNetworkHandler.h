#pragma once

#include <Kobaltrix/KXNetworkLimits.h>
#include <Kobaltrix/KXPlatform.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <memory>

/// @file
/// How messages travel on a TCP stream, and what KXNetworkServer and KXNetworkClient have in common.
///
/// A message is the bytes of one KXNetworkBuffer followed by the marker: the six characters "_KXEOB" and a
/// zero byte. There is no length and no escaping, so the bytes of a message must not contain the marker: they
/// would arrive as two messages. What has arrived of an unfinished message, and messages that nobody has
/// asked for yet, wait in a store, one for each connection.
///
/// Everything runs on the game's one thread by polling. Receiving costs time in proportion to the bytes
/// received, however many messages wait and in however small pieces a long one comes.

class KXNetworkBuffer;
class _KXConnection;
class _KXNetworkHandler;
struct _KXReceived;
struct _KXSocketAddress;

/// Forgets the bytes that wait in the store of a client; 0 stands for the connection of a KXNetworkClient.
/// Does nothing if there are none, or for null.
KX_API void KXNetworkClearStoredBuffer(_KXNetworkHandler* handler, int clientID);

/// A new block of the first run of bytes followed by the second. A null run, or a length below 1, counts as
/// empty. @return a block that the caller frees with free(); null only when memory is exhausted.
inline char* _joinBuffers(const char* first, int firstLength, const char* second, int secondLength) {
    const size_t before = first && firstLength > 0 ? static_cast<size_t>(firstLength) : 0;
    const size_t after = second && secondLength > 0 ? static_cast<size_t>(secondLength) : 0;
    char* joined = static_cast<char*>(malloc(before + after + 1)); // some systems give no block for no bytes
    if (joined && before)
        memcpy(joined, first, before);
    if (joined && after)
        memcpy(joined + before, second, after);
    return joined;
}

/// Prints a label, each byte in brackets and a newline to standard output, to look at what was received.
inline void _dumpBuffer(const char* label, const char* data, int length) {
    printf("%s", label ? label : "");
    for (int i = 0; data && i < length; ++i)
        printf("[%c]", data[i]);
    printf("\n");
}

/// What a server and a client have in common: the stores of what has arrived, and the limits for strangers.
class KX_API _KXNetworkHandler {
public:
    /// Sets what the other ends of connections may cost. At first nearly everything is open, which suits a
    /// game among friends; one that anybody can reach takes KXNetworkLimitsForStrangers().
    void setLimits(const KXNetworkLimits& limits) { _limits = limits; }
    /// What setLimits() and the three calls below have set.
    const KXNetworkLimits& limits() const { return _limits; }

    /// Sets KXNetworkLimits::longestMessage alone.
    void setStoredBufferLimit(int bytes) { _limits.longestMessage = bytes; }
    /// Sets KXNetworkLimits::sendRetryMilliseconds alone.
    void setSendRetryLimit(int milliseconds) { _limits.sendRetryMilliseconds = milliseconds; }
    /// Sets KXNetworkLimits::clearsStoredBuffers alone.
    void setClearsStoredBuffers(bool clears) { _limits.clearsStoredBuffers = clears; }

    /// Forgets the bytes that wait in the store of a client, 0 for the connection of a KXNetworkClient.
    void _clearStoredBufferForClientID(int clientID) { KXNetworkClearStoredBuffer(this, clientID); }

    _KXNetworkHandler(const _KXNetworkHandler&) = delete;
    _KXNetworkHandler& operator=(const _KXNetworkHandler&) = delete;

    KX_LIBRARY_ONLY
    KX_INTERNAL _KXNetworkHandler();
    KX_INTERNAL ~_KXNetworkHandler();
    KX_INTERNAL char* _mergeRecvBufferWithStoredBuffer(int clientID, const char* data, int length,
                                                       int& mergedLength);
    KX_INTERNAL KXNetworkBuffer* _handleReceivedBuffer(int clientID, const char* data, int length);
    KX_INTERNAL _KXReceived _receiveFrom(_KXConnection& connection, int clientID, bool inTurn);
    KX_INTERNAL void _eraseStoredBuffer(int clientID);
    KX_INTERNAL void _leave(int clientID);
    KX_INTERNAL int _storedLength(int clientID) const;

private:
    struct StoredBuffers;

    std::unique_ptr<StoredBuffers> _storedBuffers;
    KXNetworkLimits _limits;
};
