// Makes the game's sounds and its music, as WAV files in a folder.

#include "Effects.h"
#include "Score.h"

#include <cstdio>

static Track makeMusic() {
    return makeTune(score, 2 / 7.0); // 105 beats a minute
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kobaltrix_pasture_sounds FOLDER\n");
        return 2;
    }
    const struct {
        const char* name;
        Track (*make)();
        double peak;
    } sounds[] = {{"click", makeClick, 0.4}, {"jump", makeJump, 0.35},  {"land", makeLand, 0.35},
                  {"pick", makePick, 0.4},   {"stomp", makeStomp, 0.5}, {"tumble", makeTumble, 0.45},
                  {"bell", makeBell, 0.5},   {"home", makeHome, 0.5},   {"music", makeMusic, 0.2}};
    for (const auto& [name, make, peak] : sounds) {
        const std::string path = std::string(argv[1]) + "/" + name + ".wav";
        if (!make().save(path, peak)) {
            std::fprintf(stderr, "kobaltrix_pasture_sounds: %s: cannot be written\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
