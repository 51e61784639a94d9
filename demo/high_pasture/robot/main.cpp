// Looks for the ways through all levels, and records the climb through the first: kobaltrix_climber FOLDER.

#include "Climber.h"

#include <cstdio>
#include <filesystem>

static void play() {
    Options options;
    options.headless = true;
    Game game(options);
    Climber climber(game);
    climber.step(10);
    climber.press(KXKeyReturn); // the first button of the title
    climber.press(KXKeyP);      // a pause before it begins
    climber.press(KXKeyP);
    climber.climb();
    climber.step(50);
    climber.quit();
    climber.step();
}

// Writes the way through each level into a file.
static bool findWays(const std::filesystem::path& folder) {
    const Assets assets(KXDataFolder());
    bool found = true;
    for (int i = 0; i < Stage::count; ++i) {
        const Stage level(assets, i);
        const std::string way = findWay(World(level)),
                          file = (folder / ("way" + std::to_string(i + 1) + ".txt")).string();
        KXSaveFile saved(file.c_str());
        std::fprintf(saved.stream(), "%s\n", way.c_str());
        if (!saved.commit() || way.empty())
            std::fprintf(stderr, "kobaltrix_climber: there is no way through %s\n", Stage::title(i));
        found &= !way.empty();
    }
    return found;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kobaltrix_climber FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::string game = std::filesystem::path(argv[0]).replace_filename("high-pasture").string();
    bool recorded = false;
    if (KXInit(game.data())) {
        const bool found = findWays(folder);
        KXDeInit();
        const KXTestClock clock;
        if (found && KXInit(game.data()) && KXBeginRecording((folder / "meadow.txt").string().c_str()))
            play();
        KXApplicationCancelQuitRequest();
        recorded = KXRecordingStateNow() == KXRecordingRecords;
    }
    if (!recorded)
        std::fprintf(stderr, "kobaltrix_climber: %s\n", KXError());
    KXDeInit();
    KXEndRecording();
    return recorded ? 0 : 1;
}
