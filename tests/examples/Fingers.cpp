// Somebody who uses the examples: linked into those that react to a user, this presses keys and moves the
// mouse step by step, as real events.

#include "example.h"

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestPad.h>
#include <KobaltrixTest/KXTestUser.h>

#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace {
KXTestUser user(1); // in the first window
std::optional<KXTestPad> pad, another;
std::optional<KXTestClock> clock;

/// What is done after which step.
std::multimap<int, std::function<void()>> script;

void at(int step, std::function<void()> act) { script.emplace(step, std::move(act)); }

/// The mouse moved there, pressed and held.
void press(int start, int x, int y) {
    at(start, [=] { user.move({float(x), float(y)}); });
    at(start + 2, [] { user.hold(KXMouseLeft); });
}

/// A click that takes some steps.
void click(int start, int x, int y) {
    press(start, x, y);
    at(start + 4, [] { user.release(KXMouseLeft); });
}

/// A key pressed and let go some steps later.
void tap(int start, KXKeyNumber key) {
    at(start, [=] { user.hold(key); });
    at(start + 3, [=] { user.release(key); });
}

void paintAndSwim() {
    for (int step = 1; step <= 84; ++step)
        at(step, [x = 30 + 4 * static_cast<float>(step)] { user.move({x, 80 + 40 * std::sin(x / 40)}); });
    at(6, [] { user.hold(KXMouseLeft); });
    for (int step = 31; step < 40; ++step)
        at(step, [] { user.wheel(1); });
    for (int step = 61; step < 66; ++step)
        at(step, [] { user.wheel(-1); });
    at(40, [] { user.hold(KXKeyRight); });
    at(90, [] { user.hold(KXKeyDown); });
}

void holdPad() {
    for (const auto& [axis, value] : {std::pair{0, 26000}, {1, -20000}, {3, 30000}, {4, 12000}, {5, 28000}})
        at(10, [axis, value] { pad->setAxis(axis, value); });
    for (const int button : {0, 3})
        at(10, [=] { pad->setButton(button, 1); });
    at(10, [] { pad->setHat(0, 8); });
}

void playTogether() {
    at(3, [] { another.emplace(); });
    at(10, [] { pad->setAxis(0, -22000); });
    at(60, [] { pad->setAxis(0, 0); });
    for (const auto& [axis, value] : {std::pair{0, 24000}, {1, 12000}, {3, -30000}, {5, 32767}})
        at(20, [axis, value] { another->setAxis(axis, value); });
    at(60, [] { another->setAxis(0, 0); });
    at(60, [] { another->setAxis(1, 0); });
    at(80, [] { pad->setButton(0, 1); });
}

void chooseKeys() {
    click(10, 200, 108); // what makes it jump: the letter J
    tap(20, KXKeyJ);
    at(40, [] { pad->setAxis(0, 24000); });
    at(82, [] { user.hold(KXKeyJ); });
    click(90, 200, 30); // and what moves it to the left?
}

void useWidgets() {
    click(10, 60, 40); // another colour, and another
    click(20, 60, 40);
    press(40, 79, 148); // the knob for the corners
    for (int step = 43; step < 60; ++step)
        at(step, [x = 79 - (step - 42)] { user.move({float(x), 148}); });
    at(62, [] { user.release(KXMouseLeft); });
    press(80, 60, 40);
}

void openMenus() {
    tap(4, KXKeyS); // the stars off, and on
    tap(10, KXKeyS);
    click(20, 40, 28);
    click(30, 40, 50);
    click(40, 120, 72); // the sky at dusk
    click(50, 40, 28);
    click(60, 40, 50);
    at(70, [] { user.move({120, 72}); });
}

void answer() {
    click(10, 155, 136);
    press(30, 250, 136);
}

void makeList() {
    at(5, [] { user.type("Candles"); });
    tap(8, KXKeyReturn);
    click(20, 60, 160); // a row
    tap(30, KXKeyReturn);
    click(40, 60, 60); // back into the entry
    at(50, [] { user.type("Dried app"); });
    click(60, 60, 130);
}

void playPiano() {
    int start = 30;
    for (const KXKeyNumber key : {KXKeyA, KXKeyD, KXKeyG, KXKeyF, KXKeyK})
        tap(std::exchange(start, start + 16), key);
}

/// Taps that are over before a step sees them held, and what a fast hand types within one.
void tapAndType() {
    for (const int taps : {1, 2, 3})
        at(58 + 5 * taps, [=] {
            for (int i = 0; i < taps; ++i) {
                user.hold(KXKeySpace);
                user.release(KXKeySpace);
            }
        });
    press(74, 200, 76);
    at(88, [] { user.release(KXMouseLeft); });
    at(79, [] { user.hold(KXKeySpace); });
    at(84, [] { user.release(KXKeySpace); });
    at(92, [] {
        user.type("X");
        user.hold(KXKeyBackspace);
        user.release(KXKeyBackspace);
        user.type("Y");
    });
    press(94, 210, 76);
}

void flyTwice() {
    tap(2, KXKeyR);
    for (const auto& [step, key] : {std::pair{8, KXKeyUp}, {22, KXKeyRight}, {36, KXKeyDown}})
        tap(step, key);
    at(15, [] { user.hold(KXKeyUp); });
    at(45, [] { user.hold(KXKeyE); });
    at(48, [] { user.hold(KXKeyP); });
}

void point() {
    at(10, [] { user.move({262, 90}); });
}

/// Petals and a middle, in time that each frame moves by a step.
void paintFlower() {
    clock.emplace();
    for (int step = 1; step <= 100; ++step)
        at(step, [] { clock->advance(17); });
    const auto cell = [](int column, int row) { return std::pair{26 + 12 * column, 32 + 12 * row}; };
    int step = 4;
    for (const auto& [column, row] :
         {std::pair{5, 4}, {4, 5}, {6, 5}, {5, 6}, {1, 1}, {9, 1}, {1, 9}, {9, 9}}) {
        const auto [x, y] = cell(column, row);
        click(step, x, y);
        step += 6;
    }
}

/// A click on a label, then a rest on a button, in time that each frame moves by a step.
void rest() {
    clock.emplace();
    for (int step = 1; step <= 100; ++step)
        at(step, [] { clock->advance(17); });
    click(10, 20, 24);
    at(16, [] { user.type("!"); });
    at(20, [] { user.move({40, 140}); });
}

void lookAtPictures() {
    click(10, 60, 26);
    at(30, [] { user.type("ow"); });
    at(40, [] { user.move({55, 20}); }); // the folder above
}

/// Paints by the menu at the pointer, and opens a sub-menu by letters.
void edit() {
    int start = 2;
    for (const KXPoint cell : {KXPoint{176, 112}, {240, 112}, {208, 144}, {176, 176}, {240, 176}}) {
        at(start, [=] { user.move(cell); });
        at(start + 1, [] { user.hold(KXMouseRight); });
        at(start + 2, [] { user.release(KXMouseRight); });
        tap(start + 4, KXKeyP);
        start += 10;
    }
    at(60, [] { user.hold(KXKeyLeftAlt); });
    tap(62, KXKeyF);
    at(68, [] { user.release(KXKeyLeftAlt); });
    tap(70, KXKeyR);
}

/// A line is added, the keyboard goes to the notes, and two words of the scene are selected.
void writeScene() {
    at(5, [] { user.type("owl"); });
    tap(8, KXKeyReturn);
    tap(12, KXKeyTab);
    at(16, [] { user.type("say \"Ah.\""); });
    at(20, [] { user.hold(KXKeyLeftControl); });
    tap(22, KXKeyTab);
    at(26, [] { user.release(KXKeyLeftControl); });
    at(30, [] { user.type("Two who meet each night, and never at ease: a play in one act.\n\nBarn"); });
    press(60, 80, 42);
    at(66, [] { user.move({150, 106}); });
}

/// By the keyboard alone: a name, a rank of the open list, and on to the button.
void fillIn() {
    tap(5, KXKeyTab);
    at(10, [] { user.type("Ada"); });
    tap(15, KXKeyTab);
    tap(25, KXKeySpace);
    tap(35, KXKeyDown);
    tap(45, KXKeyReturn);
    tap(55, KXKeyTab);
    tap(65, KXKeySpace);
}

/// A layer is moved, the divider too, and its ways to be mixed are looked at.
void setLayer() {
    press(4, 182, 200);
    at(10, [] { user.move({192, 200}); });
    at(12, [] { user.release(KXMouseLeft); });
    click(20, 90, 64);
    at(26, [] { user.hold(KXKeyLeftControl); });
    tap(27, KXKeyA);
    at(31, [] { user.release(KXKeyLeftControl); });
    at(32, [] { user.type("-30"); });
    tap(34, KXKeyReturn);
    click(50, 100, 106);
    tap(60, KXKeyDown);
    tap(70, KXKeyDown);
}

/// Another colour is chosen and taken, and one after it looked at.
void colorLamp() {
    click(10, 140, 40);
    tap(20, KXKeyReturn);
    click(30, 186, 100);
}

/// A keystroke with a modifier held.
void tapWith(int start, KXKeyNumber modifier, KXKeyNumber key) {
    at(start, [=] { user.hold(modifier); });
    tap(start + 1, key);
    at(start + 6, [=] { user.release(modifier); });
}

/// A stroke of the brush.
void drag(int start, KXPoint from, KXPoint to) {
    press(start, int(from.x), int(from.y));
    at(start + 4, [=] { user.move({(from.x + to.x) / 2, (from.y + to.y) / 2}); });
    at(start + 6, [=] { user.move(to); });
    at(start + 8, [] { user.release(KXMouseLeft); });
}

/// A level is changed with every tool, by mouse and keys, and saved.
void editLevel() {
    for (int step = 8; step < 14; step += 2)
        at(step, [] {
            user.move({440, 246});
            user.wheel(1);
        });
    click(20, 134, 112); // a tile, and a wall of it on the ground
    tapWith(30, KXKeyLeftAlt, KXKeyY);
    tap(40, KXKeyDown);
    drag(50, {300, 180}, {420, 180});
    drag(64, {360, 180}, {360, 250});
    tapWith(80, KXKeyLeftAlt, KXKey3); // a hole in it
    click(90, 360, 215);
    tapWith(100, KXKeyLeftControl, KXKeyZ);
    tapWith(110, KXKeyLeftControl, KXKeyZ);
    tapWith(120, KXKeyLeftControl, KXKeyY);
    click(130, 24, 148); // suns by fill
    tapWith(140, KXKeyLeftAlt, KXKey2);
    click(150, 340, 180);
    click(160, 37, 312); // a layer of its own
    click(170, 80, 355);
    tapWith(180, KXKeyLeftControl, KXKeyA);
    at(190, [] { user.type("night \"1\""); });
    click(200, 12, 380);
    tapWith(210, KXKeyLeftControl, KXKeyUp);
    tapWith(220, KXKeyLeftControl, KXKeyN); // which asks, and is called off
    tap(230, KXKeyEscape);
    tapWith(240, KXKeyLeftControl, KXKeyS);
    tapWith(250, KXKeyLeftAlt, KXKeyV);
    tap(260, KXKeyG);
    click(270, 60, 44); // the keyboard from a tool on
    tap(280, KXKeyTab);
    tapWith(290, KXKeyLeftAlt, KXKeyL);
}

/// A branch is opened, the titles sort by name and then by number, and a border is moved.
void lookAtBirds() {
    click(5, 40, 46); // the mark of the oak
    click(15, 230, 26);
    click(25, 340, 26);
    press(40, 303, 26);
    at(44, [] { user.move({313, 26}); });
    at(48, [] { user.release(KXMouseLeft); });
    click(60, 240, 66);
}

/// Some steps, and the night comes.
void walkIntoTheNight() {
    for (int step = 10; step < 60; step += 5)
        tap(step, KXKeySpace);
    tap(70, KXKeyN);
}

/// On to the next screen, and to another one, which is still on its way in the picture.
void goOn() {
    tap(10, KXKeyReturn);
    tap(81, KXKeyReturn);
}

/// One finger paints, then two go apart and around each other.
void touchFish() {
    at(5, [] { user.touch(0, {40, 200}); });
    for (int step = 1; step < 25; ++step)
        at(5 + step, [way = float(step)] {
            user.slide(0, {40 + 13 * way, 200 + 20 * std::sin(way / 2)}, 0.6f);
        });
    at(31, [] { user.lift(0); });
    at(40, [] { user.touch(0, {160, 125}, 0.7f); });
    at(42, [] { user.touch(1, {240, 125}, 0.4f); });
    for (int step = 1; step < 46; ++step)
        at(43 + step, [degrees = float(step)] {
            const KXPoint way = KXTurned({40 + 0.8f * degrees, 0}, degrees);
            user.slide(0, KXPoint{200, 125} - way, 0.7f);
            user.slide(1, KXPoint{200, 125} + way, 0.4f);
        });
}

const std::pair<std::string_view, void (*)()> users[] = {{"09_keyboard_mouse", paintAndSwim},
                                                         {"10_game_pad", holdPad},
                                                         {"12_widgets", useWidgets},
                                                         {"13_menu", openMenus},
                                                         {"14_dialog", answer},
                                                         {"15_list_entry", makeList},
                                                         {"16_sound_music", playPiano},
                                                         {"20_pads", playTogether},
                                                         {"21_actions", chooseKeys},
                                                         {"23_edges", tapAndType},
                                                         {"25_replay", flyTwice},
                                                         {"37_logical_size", point},
                                                         {"43_captions", rest},
                                                         {"44_files", lookAtPictures},
                                                         {"46_menu_bar", edit},
                                                         {"47_controls", setLayer},
                                                         {"48_color_picker", colorLamp},
                                                         {"49_text_area", writeScene},
                                                         {"50_tree_table", lookAtBirds},
                                                         {"51_panel", fillIn},
                                                         {"53_reload", paintFlower},
                                                         {"55_sound_positions", walkIntoTheNight},
                                                         {"57_screens", goOn},
                                                         {"58_touch", touchFish},
                                                         {"level_editor", editLevel}};

void play(int step) {
    if (step == 1)
        for (const auto& [program, prepare] : users)
            if (std::string_view(KXApplicationName).starts_with(program))
                prepare();
    for (auto [act, end] = script.equal_range(step); act != end; ++act)
        act->second();
}

const bool ready = [] {
    afterEachStep = play;
    return pad.emplace().plugged();
}();
} // namespace
