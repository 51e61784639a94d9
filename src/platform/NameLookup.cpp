#include "platform/NameLookup.h"

#include "platform/ThreadSignals.h"

#include <atomic>
#include <exception>
#include <thread>

struct _KXNameLookup::Answer {
    std::atomic<bool> done = false;
    std::vector<_KXSocketAddress> addresses;
};

static constinit std::atomic<int> underWay = 0;

bool _KXNameLookup::begin(const std::string& host, int port) {
    constexpr int most = 8;
    if (underWay >= most)
        return false;
    auto answer = std::make_shared<Answer>();
    const auto run = [answer, host, port, lookUp = _KXLookUp] {
        try {
            answer->addresses = lookUp(host.c_str(), port);
        } catch (const std::exception&) {
            answer->addresses.clear(); // out of memory: nobody is found
        }
        answer->done = true;
        --underWay;
    };
    const _KXNoSignals quiet;
    ++underWay;
    try {
        std::thread(run).detach();
        _answer = answer;
    } catch (const std::exception&) {
        --underWay; // there is no thread to be had now
    }
    return hasBegun();
}

bool _KXNameLookup::isDone() const { return _answer && _answer->done; }

const std::vector<_KXSocketAddress>& _KXNameLookup::addresses() const { return _answer->addresses; }
