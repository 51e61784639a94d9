#pragma once

#include "net/Socket.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <string>
#include <vector>

/// Stands in for the platform's calls while it lives, whatever the socket.
class ScriptedSocket {
public:
    /// What one receive gives: bytes, or a failure, or neither (the peer has closed).
    struct Step {
        std::string bytes;
        int failure = 0;
    };

    ScriptedSocket() {
        current = this;
        _KXSocketCall.receive = [](int, void* data, int length) { return current->receive(data, length); };
        _KXSocketCall.send = [](int, const void*, int length) { return current->send(length); };
    }
    ~ScriptedSocket() { _KXSocketCall = {_KXSendBytes, _KXReceiveBytes}; }

    std::deque<Step> incoming; ///< What the peer sends; after it there is nothing for now.
    std::deque<int> outcomes;  ///< Of sends: how many bytes at most are taken, or a failure; then all are.
    bool repeatsLast = false;  ///< Whether the last of either stands for ever.
    std::vector<int> requests; ///< How many bytes each call asked for.
    std::function<void()> onSend = [] {};

private:
    int receive(void* data, int length) {
        requests.push_back(length);
        if (incoming.empty())
            return _KXSocketWouldBlock;
        const auto& [bytes, failure] = incoming.front();
        const std::size_t count =
            bytes.copy(static_cast<char*>(data), static_cast<std::size_t>(length), taken);
        const int result = failure ? failure : static_cast<int>(count);
        taken = taken + count == bytes.size() ? 0 : taken + count;
        if (taken == 0 && (!repeatsLast || incoming.size() > 1))
            incoming.pop_front();
        return result;
    }

    int send(int length) {
        onSend();
        requests.push_back(length);
        const int outcome = outcomes.empty() ? length : outcomes.front();
        if (outcomes.size() > (repeatsLast ? 1 : 0))
            outcomes.pop_front();
        return std::min(length, outcome);
    }

    static inline ScriptedSocket* current = nullptr;
    std::size_t taken = 0; // of the first step
};
