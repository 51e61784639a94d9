// Plays the nights that come with the game, and records them: kobaltrix_nights FOLDER.

#include "LevelScene.h"
#include "nights/Keeper.h"

#include <KobaltrixTest/KXTestPad.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>

namespace {
/// Somebody who keeps the fire with one of three devices: fetches moths, three at a time. Who plays with keys
/// has a display of 60 Hz, the others one of 30.
class NightKeeper : public Keeper {
public:
    NightKeeper(Game& game, const std::string& device)
        : Keeper(game, device == "keys" ? 60 : 30), _game(game), _device(device) {}

    /// Plays while it is night.
    void keepTheFire() {
        for (; const LevelScene* const level = night(); step(3))
            if (!level->picture().phase)
                act(level->picture());
    }

    KXTestPad pad;

private:
    const LevelScene* night() const { return dynamic_cast<const LevelScene*>(&_game.scene()); }

    // Under the nearest moth that does not follow yet.
    static KXPoint goal(const Picture& picture) {
        const Picture::Player& keeper = picture.players[0];
        KXPoint goal = World::fire;
        float nearest = keeper.carried < 3 ? 1000.0f : 0.0f;
        for (const Picture::Moth& moth : picture.moths) {
            const float way = std::hypot(moth.at.x - keeper.at.x, moth.at.y - keeper.at.y);
            if (way > 70 && way < nearest && moth.light > 0.3f) {
                nearest = way;
                goal = {moth.at.x, std::max(moth.at.y + 20, 320.0f)};
            }
        }
        return goal;
    }
    void act(const Picture& picture) {
        const KXPoint to = goal(picture), from = picture.players[0].at;
        const bool hops = !_hopped && std::abs(to.x - from.x) < 40;
        _hopped = hops;
        if (_device == "mouse") {
            move(to);
            hold(KXMouseLeft);
            hops ? hold(KXMouseRight) : release(KXMouseRight);
        } else if (_device == "pad") {
            const auto tilt = [](float way) { return std::clamp(way / 10, -1.0f, 1.0f); };
            pad.stick(KXPadLeftSide, {tilt(to.x - from.x), tilt(to.y - from.y)});
            hops ? pad.hold(KXPadA) : pad.release(KXPadA);
        } else {
            keep(KXKeyLeft, to.x < from.x - 8);
            keep(KXKeyRight, to.x > from.x + 8);
            keep(KXKeyUp, to.y < from.y - 8);
            keep(KXKeyDown, to.y > from.y + 8);
            keep(KXKeySpace, hops);
        }
    }
    void keep(KXKeyNumber key, bool down) {
        if (down && _held.insert(key).second)
            hold(key);
        else if (!down && _held.erase(key))
            release(key);
    }

    Game& _game;
    std::string _device;
    bool _hopped = false;
    std::set<KXKeyNumber> _held;
};

// What one does beside the night itself: into it, and out of the game again.
void play(const std::string& device) {
    Options options;
    options.headless = true;
    options.night = Options::secondsRecorded;
    Game game(options);
    NightKeeper keeper(game, device);
    keeper.step(20);
    if (device == "keys") {
        keeper.presses({KXKeyDown, KXKeyUp, KXKeyReturn, KXKeyP, KXKeyP}); // a pause before it begins
        keeper.keepTheFire();
        keeper.types("Ada");
        keeper.press(KXKeyReturn);
    } else if (device == "mouse") {
        keeper.click({400, 380}); // the options
        keeper.drag({400, 166}, {520, 166}, 1);
        keeper.clicks({{400, 352}, {400, 228}}); // back, and into the night
        keeper.keepTheFire();
        keeper.release(KXMouseLeft);
        keeper.clicks({{475, 246}, {400, 420}}); // the name stays as it is; back to the title
    } else {
        keeper.pad.hold(KXPadA);
        keeper.step(4);
        keeper.pad.release(KXPadA);
        keeper.keepTheFire();
        keeper.press(KXKeyReturn); // a name is typed, or left
    }
    keeper.step(30);
    keeper.quit();
    keeper.step();
}

// The recording of a whole run of the game, whose start is here.
bool record(const std::string& device, std::string game, const std::string& file) {
    const KXTestClock clock;
    const bool begun = KXInit(game.data()) && KXBeginRecording(file.c_str());
    if (begun)
        play(device);
    KXApplicationCancelQuitRequest();
    const bool recorded = begun && KXRecordingStateNow() == KXRecordingRecords;
    if (!recorded)
        std::fprintf(stderr, "kobaltrix_nights: %s\n", KXError());
    KXDeInit();
    KXEndRecording();
    return recorded;
}
} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kobaltrix_nights FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    bool recorded = true;
    for (const char* device : {"keys", "mouse", "pad"})
        recorded &= record(device, std::filesystem::path(argv[0]).replace_filename("ember-night").string(),
                           (folder / (std::string(device) + ".txt")).string());
    return recorded ? 0 : 1;
}
