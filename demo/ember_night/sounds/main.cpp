// Makes the demo's sounds and its music, as WAV files in a folder.

#include "Effects.h"
#include "Score.h"

#include <cstdio>

static Track makeMusic() {
    return makeTune(score, 3 / 7.0); // 70 beats a minute
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kobaltrix_sounds FOLDER\n");
        return 2;
    }
    const struct {
        const char* name;
        Track (*make)();
        double peak; ///< Found by measuring, so that all are about as loud to the ear.
    } sounds[] = {
        {"click", makeClick, 0.45}, {"pick", makePick, 0.45}, {"feed", makeFeed, 0.55},
        {"hop", makeHop, 0.5},      {"hurt", makeHurt, 0.5},  {"bat", makeBat, 0.45},
        {"dawn", makeDawn, 0.5},    {"dark", makeDark, 0.55}, {"music", makeMusic, 0.22},
    };
    for (const auto& [name, make, peak] : sounds) {
        const std::string path = std::string(argv[1]) + "/" + name + ".wav";
        if (!make().save(path, peak)) {
            std::fprintf(stderr, "kobaltrix_sounds: %s: cannot be written\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
