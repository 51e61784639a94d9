#pragma once

#include "net/Socket.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// Stands in for the system's socket calls while it lives, whatever the descriptor.
class ScriptedSocket {
public:
    /// What one call gives: bytes, or an error, or neither (the peer has closed).
    struct Step {
        std::string_view bytes;
        int error = 0;
    };

    ScriptedSocket() : _before(_KXSocketCall) {
        _current = this;
        _KXSocketCall.receive = [](int, void* data, int length) {
            return _current->receive(static_cast<char*>(data), length);
        };
        _KXSocketCall.send = [](int, const void*, int length) { return _current->send(length); };
    }
    ~ScriptedSocket() { _KXSocketCall = _before; }
    ScriptedSocket(const ScriptedSocket&) = delete;
    ScriptedSocket& operator=(const ScriptedSocket&) = delete;

    std::deque<Step> incoming; ///< What the peer sends; after it there is nothing for now.
    std::deque<int> outcomes;  ///< Of sends: how many bytes at most are taken, or minus an error.
    bool repeatsLast = false;  ///< Whether the last of either stands for ever.
    std::vector<int> requests; ///< How many bytes each call asked for.
    void (*onCall)() = [] {};

private:
    static inline ScriptedSocket* _current = nullptr;
    _KXSocketCalls _before;

    template<typename T>
    void next(std::deque<T>& script) const {
        if (!repeatsLast || script.size() > 1)
            script.pop_front();
    }

    int receive(char* data, int length) {
        requests.push_back(length);
        if (incoming.empty())
            return _KXSocketWouldBlock;
        Step& step = incoming.front();
        const int error = step.error;
        const std::size_t count = std::min(static_cast<std::size_t>(length), step.bytes.size());
        if (count > 0)
            std::memcpy(data, step.bytes.data(), count);
        if (count == step.bytes.size() || repeatsLast)
            next(incoming);
        else
            step.bytes.remove_prefix(count);
        return error ? _KXSocketFailureOf(error) : static_cast<int>(count);
    }

    int send(int length) {
        onCall();
        requests.push_back(length);
        if (outcomes.empty())
            return length;
        const int outcome = outcomes.front();
        next(outcomes);
        return outcome < 0 ? _KXSocketFailureOf(-outcome) : std::min(length, outcome);
    }
};
