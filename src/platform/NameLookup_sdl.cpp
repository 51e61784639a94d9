#include "platform/NameLookup.h"

#include "platform/ThreadSignals.h"

#include <SDL_thread.h>

#include <atomic>
#include <exception>

struct _KXNameLookup::Answer {
    std::atomic<bool> done = false;
    std::vector<_KXSocketAddress> addresses;
};

static constinit std::atomic<int> underWay = 0;

namespace {
struct Question {
    std::string host;
    int port;
    decltype(_KXLookUp) lookUp;
    std::shared_ptr<_KXNameLookup::Answer> answer;
};
} // namespace

static int answer(void* asked) {
    const std::unique_ptr<Question> question(static_cast<Question*>(asked));
    try {
        question->answer->addresses = question->lookUp(question->host.c_str(), question->port);
    } catch (const std::exception&) {
        question->answer->addresses.clear(); // out of memory: nobody is found
    }
    question->answer->done = true;
    --underWay;
    return 0;
}

// A thread of SDL's, because one of C++ made for Windows by GCC may crash when it is detached while it ends.
bool _KXNameLookup::begin(const std::string& host, int port) {
    constexpr int most = 8;
    if (underWay >= most)
        return false;
    const auto begun = std::make_shared<Answer>();
    std::unique_ptr<Question> question(new Question{host, port, _KXLookUp, begun});
    const _KXNoSignals quiet;
    ++underWay;
    SDL_Thread* const thread = SDL_CreateThread(answer, "name lookup", question.get());
    if (!thread) { // there is none to be had now
        --underWay;
        return false;
    }
    static_cast<void>(question.release()); // it belongs to the thread
    SDL_DetachThread(thread);
    _answer = begun;
    return true;
}

bool _KXNameLookup::isDone() const { return _answer && _answer->done; }

const std::vector<_KXSocketAddress>& _KXNameLookup::addresses() const { return _answer->addresses; }
