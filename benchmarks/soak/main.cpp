// kobaltrix_soak FOLDER RECORDING STEPS SERVER_STEPS: Ember Night in FOLDER, by a recording, and then a
// server go on for so many steps, and hold no more at their end than at the beginning. Ends with 1 if they
// do.

#include "Soak.h"

#include <cstdio>
#include <cstdlib>

template<class Run>
static bool soak(const char* name, int steps, Run&& run) {
    Watch watch(static_cast<std::uint64_t>(steps));
    const bool good = run(watch);
    return watch.report(name) && good;
}

int main(int argc, char** argv) {
    const int steps = argc == 5 ? std::atoi(argv[3]) : 0, serverSteps = steps > 0 ? std::atoi(argv[4]) : 0;
    if (serverSteps <= 0) {
        std::fprintf(stderr, "usage: kobaltrix_soak FOLDER RECORDING STEPS SERVER_STEPS\n");
        return 2;
    }
    const bool night =
        soak("Ember Night", steps, [argv](Watch& watch) { return soakNight(argv[1], argv[2], watch); });
    const bool server = soak("Server", serverSteps, soakServer);
    return night && server ? 0 : 1;
}
