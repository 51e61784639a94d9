#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// What the other end of a connection may cost a game.

/// What the other end of a connection may cost a game, see _KXNetworkHandler::setLimits().
///
/// As it stands nearly everything is open, which suits a game among friends; KXNetworkLimitsForStrangers() is
/// what a game takes that anybody can reach, and may change field by field. A negative number is no limit.
/// Milliseconds are those of the world, not of the game's steps.
struct KXNetworkLimits {
    /// The longest message, in bytes without its marker. A peer that sends a longer one, finished or not, is
    /// disconnected, and its bytes are freed once the messages before it were asked for. While messages wait
    /// and take more than this in all, no more is read.
    int longestMessage = -1;
    /// How many bytes may still wait to leave when another message is sent. With such a limit no send waits:
    /// what the system does not take is kept and leaves while the game polls, and a peer for which more than
    /// this waits is disconnected by the next send to it. A single message may be longer. Without a limit
    /// sends wait until the system has taken everything.
    int outgoingBytes = -1;
    /// How long a send that waits goes on while the peer does not read, counted from the first refusal; 0 for
    /// not at all. One that takes longer fails as on a broken connection: the peer is disconnected.
    int sendRetryMilliseconds = -1;
    /// After how long a silence the system asks whether the peer is still there; one that does not answer for
    /// about as long is found to be gone. In whole seconds. Holds for connections made from now on.
    int keepAliveMilliseconds = -1;
    /// Whether a disconnection frees what is stored. If not, bytes of an unfinished message stay and are put
    /// in front of what the next peer of that client id sends.
    bool clearsStoredBuffers = false;

    /// How long receiveNext() goes on after a poll(), and how many messages it hands out. One always gets
    /// through, whatever the time.
    int turnMilliseconds = 2;
    int turnMessages = 1000; ///< See #turnMilliseconds.

    // A client takes no notice of these.

    /// How many clients may come from one address. Of IPv6, where a household has more than it can count,
    /// the first half of the address counts.
    int clientsPerAddress = -1;
    /// Within what time a new client has to send its first message. poll() disconnects one that does not;
    /// time in which the game did not poll counts as a second at most.
    int firstMessageMilliseconds = -1;
    /// How long a client may send no message. poll() disconnects one that is silent for longer.
    int idleMilliseconds = -1;
    /// Whether one call refuses all connections that wait while every slot is taken. If not, each call
    /// refuses one, and disconnects the client whose id is the number of its descriptor.
    bool refusesAllWhenFull = false;
};

/// Limits for a game that anybody can reach: 64 KB a message, 1 MB waiting to leave, 4 clients an address,
/// the first message within 10 seconds, no minute without one, and nothing left behind.
KX_API KXNetworkLimits KXNetworkLimitsForStrangers();
