// A display of DISPLAY_RATE Hz, in time of its own: preloaded into a game, this waits for the display by
// turning the clock on, and closes the game's window after DISPLAY_SECONDS of that time, ten without it.

#include <SDL.h>

#include <cstdint>
#include <cstdlib>

#include <dlfcn.h>
#include <pthread.h>
#include <time.h>

namespace {
/// The function that this file stands before.
template<typename Function>
Function* original(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t drawing = 1'500'000; // how long a frame takes to be drawn
const pthread_t game = pthread_self();      // other threads keep the system's time
std::int64_t now = second;                  // nanoseconds

bool isGame() { return pthread_equal(pthread_self(), game); }

/// Lets time pass, and the user leave when it is over.
void wait(std::int64_t nanoseconds) {
    static const char* const seconds = std::getenv("DISPLAY_SECONDS");
    static const std::int64_t end = second * (1 + (seconds ? std::atoi(seconds) : 10));
    now += nanoseconds;
    if (now < end)
        return;
    SDL_Event event = {};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
}
} // namespace

extern "C" {
int clock_gettime(clockid_t clock, timespec* time) noexcept {
    static auto* const real = original(clock_gettime, "clock_gettime");
    if (clock != CLOCK_MONOTONIC || !isGame())
        return real(clock, time);
    *time = {now / second, now % second};
    return 0;
}

int nanosleep(const timespec* time, timespec* rest) {
    static auto* const real = original(nanosleep, "nanosleep");
    if (!isGame())
        return real(time, rest);
    wait(time->tv_sec * second + time->tv_nsec);
    return 0;
}

Uint64 SDL_GetTicks64() { return static_cast<Uint64>(now / 1'000'000); }

int SDL_WaitEventTimeout(SDL_Event*, int milliseconds) {
    wait(milliseconds * 1'000'000LL);
    return 0;
}

void SDL_GL_SwapWindow(SDL_Window* window) {
    static auto* const real = original(SDL_GL_SwapWindow, "SDL_GL_SwapWindow");
    static const std::int64_t refresh = second / std::atoi(std::getenv("DISPLAY_RATE"));
    real(window);
    wait(drawing);
    wait(refresh - now % refresh);
}
}
