#pragma once

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <initializer_list>
#include <memory>

/// @file
/// The menus of a tool: a bar of titles along the top of a window, and columns that open at the pointer.
///
/// @code
/// enum { New = 1, Save, Recent, Quit, Grid, FirstRecent = 100 };
/// KXUIMenuBar bar;
/// bar.addMenu("&File", {{"&New", New, {KXKeyN, KXUICommand}},
///                       {"&Save", Save, {KXKeyS, KXUICommand}},
///                       {"Open &recent", Recent},
///                       {}, // a line
///                       {"&Quit", Quit, {KXKeyQ, KXUICommand}}});
/// bar.addSubMenu(Recent, {{"meadow.lvl", FirstRecent}, {"cave.lvl", FirstRecent + 1}});
/// bar.setSize({window.size().width, -1});
///
/// while (bar.poll()) // in a logic step, before what its columns may cover
///     if (bar.chosen() == Save)
///         save();
/// bar.draw(); // in a frame, last
/// @endcode
///
/// An entry is known by a number of the game's choosing. Nothing is called when the user chooses one: poll()
/// tells it. Functions that are given a number which no entry has change nothing and say 0; where several
/// entries have it, they mean the first.
///
/// The letter behind an ampersand in a text is underlined and chooses the entry while its column is open;
/// "&&" is an ampersand. Texts are laid out whatever the theme says: they are no formats, may hold colour
/// spans, and end with an ellipsis where they do not fit.
///
/// Columns stay within the window, by its KXWindow::logicalSize(); one that is higher scrolls, by the wheel,
/// by keys, and by resting at its ends. A sub-menu opens when the pointer has rested on its entry for 300 ms
/// by the time of the logic loop, or at once by a press or a key.
///
/// While something is open it has the keyboard, which then goes back to the widget that had it, and the
/// mouse: a press elsewhere closes it and is for nobody else. So poll these before what they may cover.

class KXTexture;

/// What is held with the key of a shortcut; several of them together.
enum KXUIModifier : int {
    KXUICommand = 1, ///< Control; on macOS Command.
    KXUIShift = 2,   ///< Shift.
    KXUIAlt = 4      ///< Alt; on macOS Option.
};

/// Keys that choose an entry of a menu bar at any time.
struct KXUIShortcut {
    int key = KXKeyNone; ///< A key by its label, see KXKeyNumber; KXKeyNone for no shortcut.
    int modifiers = 0;   ///< What is held with it, of #KXUIModifier, and nothing else.
};

/// What to show for a shortcut: "Ctrl+Shift+S", and on macOS the signs of the keys. Empty without a key. A
/// temporary string.
KX_API const char* KXUIShortcutName(KXUIShortcut shortcut);

/// What choosing an entry does to its mark.
enum KXUIMenuEntryKind : int {
    KXUIMenuEntryPlain = 0, ///< It has none.
    KXUIMenuEntryCheck = 1, ///< It is set, or taken away if it was.
    KXUIMenuEntryRadio =
        2 ///< It is set, and taken from the radio entries beside it, up to those of another kind.
};

/// An entry as it is added to a menu.
struct KXUIMenuEntry {
    const char* text = nullptr;                  ///< Its caption, copied; null for a line between entries.
    int id = 0;                                  ///< What chosen() tells; 0 for an entry that tells nothing.
    KXUIShortcut shortcut = KXUIShortcut();      ///< Shown at its right.
    KXUIMenuEntryKind kind = KXUIMenuEntryPlain; ///< Whether it has a mark.
    int checked = 0;                             ///< Non-zero if its mark is set.
    int enabled = -1;                            ///< 0 if it cannot be chosen yet.
    KXTexture* icon =
        nullptr; ///< Left of the text. Not owned, it must live as long as the entry; null for none.
    KXRect iconSource = {{0, 0}, {-1, -1}}; ///< The part of it, as KXDrawOptions::source has it.
};

/// What menu bars and context menus have in common: entries of which the user chooses one.
class KX_API _KXUIMenuTree : public _KXUIWidget {
public:
    ~_KXUIMenuTree() override;

    /// Adds entries to the end of an entry's sub-menu, which it has from then on. One that is empty cannot be
    /// opened. Throws std::bad_alloc, with nothing changed, when memory is exhausted.
    /// @return -1, or 0 if there is no such entry.
    int addSubMenu(int id, std::initializer_list<KXUIMenuEntry> entries) {
        return addSubMenu(id, entries.begin(), static_cast<int>(entries.size()));
    }
    /// The same with a table. @param id as above. @param entries may be null where there are none. @param
    /// count of the entries.
    int addSubMenu(int id, const KXUIMenuEntry* entries, int count);
    /// Removes all entries of an entry's sub-menu, to fill it anew. @return -1, or 0 if there is no such
    /// entry.
    int removeEntries(int id);

    /// Gives an entry another text. @param id its number. @param text copied; null for an empty one. @return
    /// -1, or 0 if there is no such entry. Throws std::bad_alloc, with nothing changed, when memory is
    /// exhausted.
    int setEntryText(int id, const char* text);
    /// Gives an entry another shortcut. @return -1, or 0 if there is no such entry.
    int setEntryShortcut(int id, KXUIShortcut shortcut);
    /// With 0 an entry is dimmed and cannot be chosen, nor what is in its sub-menu, until a call with another
    /// number. @return -1, or 0 if there is no such entry.
    int setEntryEnabled(int id, int enabled);
    /// -1 if an entry is enabled, else 0.
    int isEntryEnabled(int id) const;
    /// Sets the mark of an entry with a non-zero @a checked, takes it away with 0. Setting that of a radio
    /// entry takes it from those beside it. @return -1, or 0 if there is no such entry.
    int setEntryChecked(int id, int checked);
    /// -1 if an entry has its mark, else 0.
    int isEntryChecked(int id) const;

    /// Takes the user's doing in. Call it once in each logic step, or until it gives 0.
    /// @return -1 if an entry was chosen that chosen() tells. Where several were within a step, each call
    /// tells one, in the order in which they were chosen; none is lost that waits for the next step.
    int poll();
    /// The number of the entry that the last poll() has told, 0 for none.
    int chosen() const;

    /// -1 while something is open or the keyboard is in a bar, else 0.
    int isOpen() const;
    /// Closes what is open.
    void close();

    /// Colours for where the theme has no palette; at first those of KXSetUIColor().
    void setColors(const KXUIColors& colors);
    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    int pollInPanel() override;         ///< poll().
    int takesKeyboard() const override; ///< 0: it has a way of its own to the keyboard.
    int hasPopup() const override;      ///< isOpen().
    void drawPopup() override;          ///< Draws the columns that are open.
    /// While something is open the entry that is lit, with its shortcut as its value.
    KXUIDescription description() const override;
    _KXFocus* keyboardPart() override;

protected:
    // For the menus of the library.
    struct KX_INTERNAL State;
    KX_INTERNAL explicit _KXUIMenuTree(bool hasTitles);
    KX_INTERNAL void _drawTitles();

    std::unique_ptr<State> _state; ///< What the header does not show.

private:
    KX_INTERNAL void _drawColumn(int level);
};

/// A bar of titles, each with a column of entries.
///
/// A press on a title opens its column, and another one closes it; a press may also be held, dragged to an
/// entry and let go there. While a column is open the pointer opens those whose titles it comes to. F10 and
/// Alt pressed alone put the keyboard into the bar, Alt and the underlined letter of a title opens its column
/// (not on macOS, where Option writes letters): there arrows, Home and End move, Right and Left also go from
/// menu to menu and in and out of sub-menus, Return and Space choose, Escape closes the innermost column, and
/// letters choose the entry in which they are underlined or go to the next that begins with them.
///
/// Shortcuts act while nothing is open, too, once for each press. Those without Control, Command or Alt are
/// for the widget that has the keyboard, if one has, but for function keys; and so is what a text entry does
/// by itself, such as Control and C.
class KX_API KXUIMenuBar : public _KXUIMenuTree {
public:
    /// A bar without titles, of no size.
    KXUIMenuBar();
    ~KXUIMenuBar() override;

    /// Adds a title at the right of the others. @param text copied; null is an empty one. @param entries of
    /// its column.
    /// @param id for setEntryEnabled(), addSubMenu() and their kind; 0 for none.
    /// Throws std::bad_alloc, with nothing changed, when memory is exhausted.
    void addMenu(const char* text, std::initializer_list<KXUIMenuEntry> entries, int id = 0) {
        addMenu(text, entries.begin(), static_cast<int>(entries.size()), id);
    }
    /// The same with a table. @param text,id as above. @param entries may be null where there are none.
    /// @param count of the entries.
    void addMenu(const char* text, const KXUIMenuEntry* entries, int count, int id = 0);

    /// Sets the extent in pixels. A height of -1 is fitted to the font, a width of -1 to the titles.
    void setSize(KXSize size) override;
    /// Like _KXUIWidget::setFont(), and fits what setSize() was asked to fit.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), and fits what setSize() was asked to fit.
    int setFontSize(int size) override;
    /// Draws the bar, and its open columns over whatever was drawn before. Throws std::bad_alloc as
    /// KXTextLayout::draw() does.
    void draw() override;
};

/// A column of entries that opens where it is asked to.
///
/// @code
/// if (!menu.isOpen() && KXMouseWentUp(KXMouseRight)) // after menu.poll()
///     menu.open(KXMousePoint);
/// if (KXKeyWentDown(KXKeyMenu))
///     menu.open(cursor);
/// @endcode
///
/// It is worked as the columns of a KXUIMenuBar are. Its shortcuts are shown, and heard while it is open.
class KX_API KXUIContextMenu : public _KXUIMenuTree {
public:
    /// A menu without entries.
    KXUIContextMenu();
    ~KXUIContextMenu() override;

    /// Adds entries below the others. Throws std::bad_alloc, with nothing changed, when memory is exhausted.
    void add(std::initializer_list<KXUIMenuEntry> entries) {
        add(entries.begin(), static_cast<int>(entries.size()));
    }
    /// The same with a table. @param entries may be null where there are none. @param count of the entries.
    void add(const KXUIMenuEntry* entries, int count);
    /// Removes all entries.
    void clear();

    /// Opens it with its top left at a point, or as near as it fits into the window; without entries, or
    /// while it is disabled or hidden, nothing happens. One that is open moves there, with its sub-menus
    /// closed.
    void open(KXPoint point);
    /// Draws it while it is open, over whatever was drawn before. Throws std::bad_alloc as
    /// KXTextLayout::draw() does.
    void draw() override;
};
