// Somebody who plays the tutorial's programs: linked into each, this presses its keys step by step, and keeps
// a picture at the end. The programs know nothing of it: the linker sends their calls of the loop here first.

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestUser.h>

#include <cstdlib>
#include <vector>

namespace {
/// A key that is held from after one step until after another.
struct Press {
    KXKeyNumber key;
    int from, to;
};

/// What is done in each of the tutorial's steps, by the number that their names begin with, and how many
/// logic steps it takes.
struct Session {
    int steps;
    std::vector<Press> presses;
};

const Session sessions[] = {
    {3, {}},
    {60, {{KXKeyDown, 5, 40}, {KXKeyRight, 10, 60}}},
    {60, {{KXKeyS, 5, 40}, {KXKeyA, 10, 60}}},
    {60, {{KXKeyDown, 5, 60}, {KXKeyLeft, 10, 60}}},
    {60, {{KXKeyDown, 5, 60}, {KXKeyLeft, 10, 60}}},
    {80, {{KXKeyDown, 5, 80}, {KXKeyLeft, 10, 52}}},
    {105, {{KXKeyDown, 5, 80}, {KXKeyLeft, 10, 52}, {KXKeyRight, 70, 105}}},
    {160, {{KXKeyDown, 5, 160}, {KXKeyLeft, 10, 60}}},
    {180, {{KXKeyReturn, 2, 4}, {KXKeyDown, 5, 165}, {KXKeyLeft, 10, 60}, {KXKeyEscape, 170, 172}}},
    {1500, {{KXKeyRight, 2, 4}, {KXKeyReturn, 6, 8}, {KXKeyDown, 10, 400}}},
    // The page on screens: from the title into a level, a pause, the title again, and another level, which is
    // paused.
    {240,
     {{KXKeyReturn, 30, 32},
      {KXKeyEscape, 90, 92},
      {KXKeyEscape, 100, 102},
      {KXKeyReturn, 150, 152},
      {KXKeyEscape, 235, 237}}},
};

KXTestUser user(1); // in the first window
const Session* session = nullptr;
int steps = 0;
} // namespace

extern "C" {
int __real__Z6KXInitPc(char* path);
void __real__Z13KXLogicUpdatev();
void __real__ZN8KXWindow11swapBuffersEv(KXWindow* window);

int __wrap__Z6KXInitPc(char* path) {
    const int result = __real__Z6KXInitPc(path);
    session = &sessions[std::atoi(KXApplicationName) - 1];
    std::srand(1); // chance is the same every time
    return result;
}

void __wrap__Z13KXLogicUpdatev() {
    __real__Z13KXLogicUpdatev();
    ++steps;
    for (const Press& press : session->presses) {
        if (press.from == steps)
            user.hold(press.key);
        if (press.to == steps)
            user.release(press.key);
    }
    KXResetLogicLoop(); // nothing is owed but one step, which the next frame runs
}

void __wrap__ZN8KXWindow11swapBuffersEv(KXWindow* window) {
    if (steps == session->steps) {
        window->copyImage().writeToPNG("shot.png");
        KXApplicationRequestQuit();
    }
    __real__ZN8KXWindow11swapBuffersEv(window);
}
}
