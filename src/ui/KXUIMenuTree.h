#pragma once

#include <Kobaltrix/KXUIMenuBar.h>

#include "ui/Focus.h"
#include "ui/MenuEntry.h"

#include <cstdint>
#include <vector>

/// What the user does to menus: which columns are open, which entry of each is lit, and what was chosen.
struct _KXUIMenuTree::State : _KXFocus {
    State(_KXUIMenuTree& owner, bool isBar);

    /// A column that is open, or the bar itself.
    struct Level {
        _KXMenuEntry* entry; ///< Whose entries it shows.
        int place = -1;      ///< Of that among the entries of the level before.
        int lit = -1;        ///< The one that keys move from and that is drawn so; -1 for none.
        int scrolled = 0;    ///< Pixels of the entries that lie above it.
        int left = 0, top = 0, right = 0, bottom = 0; ///< With its border.

        int room() const { return bottom - top - 2; } ///< The height that entries have.
    };
    /// What lies under the pointer.
    struct Spot {
        int level = -1; ///< -1 for nothing of it.
        int index = -1; ///< -1 for no entry that can be come to.
    };

    _KXUIMenuTree& menu;
    const bool hasTitles;
    KXUIColors colors;
    _KXMenuEntry root{KXUIMenuEntry()};
    std::vector<Level> levels; ///< The root's first; empty while nothing is open.
    KXPoint corner = {0, 0};   ///< Where a context menu was asked to open.
    std::vector<int> waiting;  ///< Entries that were chosen, and not told yet.
    int told = 0;

    bool altIsAlone = false;      ///< It went down, and nothing was pressed since.
    bool isPressed = false;       ///< The left button was pressed on a title or an entry, and is held,
    bool isPressedInside = false; ///< on an entry,
    KXPoint pressed = {0, 0};     ///< there.
    bool isByMouse = false;       ///< What was done last.
    int hoveredLevel = -1;        ///< Which the pointer is over, -1 for none or once keys were used,
    std::uint32_t hoverTime = 0;  ///< since when its entry is lit,
    bool isSettled = true;        ///< and whether that has opened and closed what it will.
    std::uint32_t scrollTime = 0; ///< When the pointer scrolled a column last.

    bool isOpen() const { return !levels.empty(); }
    bool isBar(int level) const { return hasTitles && level == 0; }
    int innermost() const { return static_cast<int>(levels.size()) - 1; }
    /// The entry of a level that is lit, null for none.
    _KXMenuEntry* lit(int level) const;

    // What opens and closes.
    void begin();
    void dismiss();
    void shut();
    void closeTo(int level);
    void open(int level, int index);
    void choose(_KXMenuEntry& entry, _KXMenuEntry& parent);
    void forgetRemoved();

    // Where things are.
    static constexpr int endHeight = 12; ///< Of the ends of a column that scroll it.
    const _KXMenuRows& rows(_KXMenuEntry& entry) const;
    void place();
    int titleAt(int x);
    int moreAt(const Level& level, int y) const;

    void passTime();
    bool needsKey(int, const _KXModifiers&) const override { return true; }

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void overheard(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void keyboardLost() override { shut(); }
    bool takesText() const override { return false; }

private:
    void placeLevel(int level);
    Spot spot();
    int furthest(const Level& level) const;
    void scroll(Level& level, std::int64_t pixels);
    void reveal(Level& level);
    void settle();

    void claim() const;
    void pressClosed(bool isLeft);
    void press(bool isLeft);
    void holdPointer(bool onEntry);
    void release();
    void unlightBehind(Spot at);
    void lightTo(Spot at);
    void hover();
    void turnWheel(float notches);

    void light(int level, int index);
    void enter(int step);
    int titleInUse() const;
    void goToTitle(int title);
    void goIn();
    void goOut();
    void goUp();
    void move(int step, bool fromEnd);
    void chooseLit();
    bool useMnemonic(char32_t letter);
    bool goToLetter(char32_t letter);
    void useLetter(const KXInputEvent& key);
    bool useTitleMnemonic(const KXInputEvent& key);
    bool useShortcut(const KXInputEvent& key, const _KXModifiers& modifiers);
    void beginByKey();
    void heardFirstOf(const KXInputEvent& key, const _KXModifiers& modifiers);
};
