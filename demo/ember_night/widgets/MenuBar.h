#pragma once

#include "Style.h"

#include <array>
#include <deque>
#include <vector>

/// What can be chosen in the menus.
enum class Command { None, Open, Save, Title, Stoke, Damp, Dark, Gold, Rose, Teal, About, Tools };

/// Three menus in a bar at the top, one of them with menus in menus. One is open at a time, and a click
/// elsewhere closes it.
class MenuBar {
public:
    MenuBar();

    /// One logic step. @return what was chosen by mouse or shortcut.
    Command step();
    void draw();
    bool isOpen();
    void close();

private:
    /// What an entry hands to its callback.
    struct Entry {
        MenuBar* bar;
        Command command;
    };
    static void chosen(void* entry);
    void add(KXUIMenu& menu, const char* name, Command command, int modifierKey = 0, int key = 0);
    void addGlowMenu();
    /// Closes the menu that was open if another was opened. @return whether one was.
    bool switchMenus(const std::array<bool, 3>& wasOpen);
    int openMenus();

    KXUIMenu _file, _fire, _help;
    std::array<KXUIMenu*, 3> _titles = {&_file, &_fire, &_help};
    std::vector<KXUIMenu*> _all; ///< Those within the others, too.
    std::deque<Entry> _entries;  ///< The menus know where they are.
    Command _command = Command::None;
    bool _held = false;
};
