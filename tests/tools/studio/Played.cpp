// Somebody who makes a sprite in the studio, step by step, as real events: what session.txt is a recording
// of.
//
//     studio_played SHEET.png --record session.txt

#include "studio/Studio.h"

#include "Document.h"

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <map>

namespace {
KXTestUser user(1); // in the first window
std::multimap<int, std::function<void()>> script;
int now = 10;

/// Some steps later.
void then(std::function<void()> act, int steps = 2) { script.emplace(now += steps, std::move(act)); }

void tap(KXKeyNumber key) {
    then([=] { user.hold(key); });
    then([=] { user.release(key); });
}

/// With Control, and others.
void choose(KXKeyNumber key, std::initializer_list<KXKeyNumber> others = {}) {
    then([] { user.hold(KXKeyLeftControl); });
    for (const KXKeyNumber other : others)
        then([=] { user.hold(other); });
    tap(key);
    for (const KXKeyNumber other : others)
        then([=] { user.release(other); });
    then([] { user.release(KXKeyLeftControl); });
}

void type(const char* text) {
    then([=] { user.type(text); });
    tap(KXKeyReturn);
}

void press(KXPoint at) {
    then([=] { user.move(at); });
    then([] { user.hold(KXMouseLeft); });
}

void click(KXPoint at) {
    press(at);
    then([] { user.release(KXMouseLeft); });
}

void drag(KXPoint from, KXPoint to) {
    press(from);
    for (int i = 1; i <= 4; ++i)
        then([=] {
            const float part = static_cast<float>(i) / 4;
            user.move({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
        });
    then([] { user.release(KXMouseLeft); });
}

/// The middle of a cell of the sheet, which is 96 pixels wide and shown four times as large.
KXPoint cell(int i) { return {61 + 64 * static_cast<float>(i), 327}; }

/// A place of the frame on the stage, whose pixels are 24 points wide and high.
KXPoint stage(float x, float y) { return {469 + 24 * x, 134 + 24 * y}; }

/// The duration on the page of frames.
constexpr KXPoint steps = {945, 588};

/// The middle of a frame in the strip, and its right edge.
KXPoint strip(float i) { return {40 + 72 * i, 630}; }

void makeOwl() {
    choose(KXKeyN, {KXKeyLeftShift});
    type("fly");
    choose(KXKey3); // cells
    drag(cell(2), cell(5));
    click(strip(0));
    tap(KXKeyEquals); // a step longer, and that taken back
    choose(KXKeyZ);
    drag(strip(3), strip(1)); // to another place, and back again
    choose(KXKeyZ);
    choose(KXKeyN, {KXKeyLeftShift});
    type("sit");
    drag(cell(0), cell(1));
    click(strip(0));
    click(steps);
    choose(KXKeyA);
    type("90");
    choose(KXKeyN, {KXKeyLeftShift});
    type("blink");
    choose(KXKey2); // any rectangle
    drag({93 + 2, 295 + 2}, {93 + 62, 295 + 62});
    click(cell(5)); // which is none
    choose(KXKeyC);
    choose(KXKeyV);
    choose(KXKeyL); // plays once
    choose(KXKeyB);
    type("body");
    drag(stage(16, 8), stage(15, 8)); // the right edge
    drag(stage(8, 0), stage(8, 2));   // the upper one
    choose(KXKeyB);
    type("beak");
    drag(stage(16, 16), stage(2, 3)); // a corner, to the size
    drag(stage(1, 1), stage(8, 7));   // and the box, to its place
    for (const KXKeyNumber key : {KXKeyLeft, KXKeyUp, KXKeyRight, KXKeyDown})
        tap(key);
    choose(KXKeyUp, {KXKeyLeftShift}); // the list's order
    choose(KXKeyS);
    then([] {}, 20);
    tap(KXKeyReturn);
    click({900, 83}); // fly, in the list
    tap(KXKeyF8);     // plays
    then([] {}, 90);
    tap(KXKeyF8);
    then([] { user.move({230, 327}); });
}

const bool ready = [] {
    makeOwl();
    afterEachStudioStep = [](int step) {
        for (auto [act, end] = script.equal_range(step); act != end; ++act)
            act->second();
    };
    return true;
}();
} // namespace

int main(int argc, char** argv) {
    StudioOptions options;
    if (argc != 4 || std::strcmp(argv[2], "--record") != 0)
        return 2;
    options.file = argv[1];
    options.record = argv[3];
    if (const char* picture = std::getenv("STUDIO_PICTURE"))
        options.screenshot = picture;
    options.frames = now + 20;
    const KXTestClock clock(1); // which does not wait
    try {
        runStudio(options);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 1;
    }
    return 0;
}
