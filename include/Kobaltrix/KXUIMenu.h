#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>
#include <string>
#include <vector>

/// @file
/// Menus: a title that opens a column of entries below it, with shortcuts and sub-menus.
///
/// A game makes a KXUIMenu, adds entries, polls the menu once per logic step and draws it once per frame,
/// last of all that it may cover. Menus are grey with black texts, whatever KXSetUIColor() was given. What an
/// entry calls may do anything: open something that runs its own loop, clear the menu's entries, or delete
/// the whole menu.

class KXUIMenu;
class _KXCaption;

/// What a menu and its entries have in common: a caption, colours and the menu they belong to.
class KX_API _KXUIMenuBase : public _KXUIWidget {
public:
    _KXUIMenuBase();
    /// Takes the entry out of the menu that owns it, and leaves no entry with a parent that is gone.
    ~_KXUIMenuBase() override;

    virtual void close() = 0;  ///< Closes what is open from here on downward.
    virtual int isOpen() = 0;  ///< -1 while the menu is open, else 0; for an entry the menu it belongs to.
    virtual void resize() = 0; ///< Fits the sizes to the captions.
    virtual void poll() = 0;   ///< Follows mouse and keyboard. Once per logic step.
    virtual void layout() = 0; ///< Places the entries.

    /// Thickness of the borders in pixels, 1.
    int borderSize() const;
    /// Pixels that the caption is wide, truncated, or rounded up if it is laid out; 0 without a font or a
    /// caption.
    int itemWidth() const;

    void setBackgroundNormalColor(float r, float g, float b, float a); ///< Of this entry only, as are all.
    void setBackgroundHoverColor(float r, float g, float b, float a);  ///< While the pointer is over it.
    void setBackgroundOpenColor(float r, float g, float b, float a);   ///< Of the title of an open menu.
    void setBorderColor(float r, float g, float b, float a);           ///< Also of a sub-menu's mark.
    void setTextColor(float r, float g, float b, float a);             ///< Also of a divider.

    /// The menu that the entry belongs to; null for a top-level menu, and once that menu is deleted.
    _KXUIMenuBase* getParent() const;
    /// Sets what getParent() gives, not who owns the entry. An entry that is above @a parent, or @a parent
    /// itself, changes nothing.
    void setParent(_KXUIMenuBase* parent);

private:
    friend class KXUIMenu;
    friend class _KXUIMenuItem;

    struct Colors {
        KXColor normal, hover, open, border, text;
    };
    KX_INTERNAL void _setLabel(const std::string& text);
    KX_INTERNAL Colors _drawnColors() const;
    KX_INTERNAL void _drawLabel(float free) const;
    KX_INTERNAL bool _takesClicks();

    _KXUIMenuBase* _parent;
    std::unique_ptr<_KXCaption> _label; // null without a caption
    int32_t _borderSize;
    Colors _colors;
    KXUIMenu* _owner;                      // whose entries it is among; null for those of the game
    std::vector<_KXUIMenuBase*> _children; // those whose parent it is
    int32_t _justOpened;                   // by the click that is being handled
};

/// An entry: a caption that calls something, or a divider.
class KX_API _KXUIMenuItem : public _KXUIMenuBase {
public:
    /// An entry that is in no menu; menus make theirs themselves, see KXUIMenu::addMenuItemWithName().
    _KXUIMenuItem(const char* name, void (*callback)(void*), void* context, int modifierKey, int key);
    ~_KXUIMenuItem() override;

    /// Draws the row: bright under the pointer, or a line where there is no caption.
    void draw() override;
    /// Does nothing: an entry is never open itself.
    void close() override;
    /// -1 while the menu that it belongs to is open, else 0.
    int isOpen() override;
    /// Does nothing: the menu sizes its rows.
    void resize() override;
    /// Acts on a click while the menu is open, and on the shortcut at any time.
    void poll() override;
    /// Does nothing: the menu places its rows.
    void layout() override;

private:
    KX_INTERNAL bool _isShortcutPressed();
    KX_INTERNAL void _activate();

    void (*_callback)(void*);
    void* _context;
    int32_t _modifierKey;
    int32_t _key;
    int32_t _latch;
    int32_t _modifierLetGo;
};

/// A menu, at the top or within another menu.
///
/// Its title opens and closes it; entries hang below the title, those of a sub-menu to the right of its row.
/// Acting on an entry closes all menus above it. After a click elsewhere it stays open: call close().
///
/// The mark of a sub-menu covers the last pixels of its row, and with the padding of 3 it cuts the widest
/// caption of the column: let the title of a sub-menu end with three blanks, set KXUIWidgetInnerPadding to
/// {8, 3} before menus are made, or have captions laid out (#KXUICaptionsLaidOut), which have room beside it.
class KX_API KXUIMenu : public _KXUIMenuBase {
public:
    /// A closed menu at (0, 0), as large as its title. @param title copied, the first 254 bytes of it; null
    /// for none. A title, like the names of entries, is used as a format without arguments ("%%" prints one
    /// percent sign, but is measured as two), unless captions are laid out, and may hold colour spans, see
    /// KXFont. Throws std::bad_alloc when memory is exhausted.
    explicit KXUIMenu(const char* title);
    /// A closed menu without a title and of no size, until it gets entries.
    KXUIMenu();
    /// Deletes all entries.
    ~KXUIMenu() override;

    /// Deletes all entries, sub-menus too.
    void clearMenuItems();
    /// setFont(@a path, @a mode, the size of the menu's own font or else 10).
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFont() with a size in points, also for all entries, which are laid out anew.
    int setFont(const char* path, KXAliasMode mode, int size);
    /// Like _KXUIWidget::setFontSize(), also for all entries, which are laid out anew.
    int setFontSize(int size) override;
    /// Also for all entries. See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;

    /// Adds an entry with the menu's font and present colours.
    /// @param name copied, the first 254 bytes of it; null makes a divider. @param callback called when the
    /// entry is clicked in the open menu; null for none. @param context handed to @a callback.
    void addMenuItemWithName(const char* name, void (*callback)(void*), void* context);
    /// Adds an entry with a shortcut, whose name then ends in "(key)" or "(modifier - key)". The shortcut
    /// works while the menu is closed, too, once for each time that the keys come together, and consumes the
    /// press of @a key as KXKey(key, -1) does. Without a modifier it works whatever else is held, so add the
    /// entry with a modifier before one with the same key alone.
    /// @param name,callback,context as in the form without a shortcut.
    /// @param modifierKey a key number, see KXKey(); 0 for none. @param key a key number; 0 for no shortcut.
    void addMenuItemWithName(const char* name, void (*callback)(void*), void* context, int modifierKey,
                             int key);
    /// Adds a menu as an entry; from now on it belongs to this menu, so it must come from new. Deleting it
    /// takes it out again. One that is in a menu already moves here, to the end; null, this menu itself and a
    /// menu that this one is in are ignored. Throws std::bad_alloc when memory is exhausted; it then belongs
    /// to whom it did before.
    void addSubMenu(KXUIMenu* subMenu);
    /// With a non-zero @a closes, for this menu and all within it, a sub-menu that opens closes those beside
    /// it: at most one is open. With 0, as at the start, those stay open, and where they overlap the one that
    /// is seen need not be the one that acts.
    void setClosesSiblings(int closes);
    /// Adds a line between entries. It does nothing when it is clicked but close the menu.
    void addDivider();

    /// Closes the menu and all menus in it.
    void close() override;
    /// -1 while the menu is open, else 0.
    int isOpen() override;
    /// Fits the title (of a top-level menu) and the rows to the widest caption; (100, 100) without a font.
    /// Everything that adds entries or changes the font calls it.
    void resize() override;
    /// Places the entries, opens or closes the menu when its title is clicked, and polls the entries.
    void poll() override;
    /// Places the entries below the title, or beside the row of a sub-menu. Each poll() does.
    void layout() override;
    /// Draws the title and, while the menu is open, the entries where the last poll() placed them.
    void draw() override;
    int pollInPanel() override;         ///< poll(). @return 0: entries call what they are for.
    int takesKeyboard() const override; ///< 0: its entries have shortcuts.
    /// -1 also for the entries of an open menu.
    int containsPoint(KXPoint point) const override;
    KXUIDescription description() const override; ///< Says whether it is open.

    // Used by the library itself.
    KX_INTERNAL std::unique_ptr<_KXUIMenuBase> _takeOut(_KXUIMenuBase* entry);

private:
    struct KX_INTERNAL Walk;
    KX_INTERNAL void _addEntry(_KXUIMenuBase& entry);
    KX_INTERNAL void _openOrCloseByClick();
    KX_INTERNAL void _drawEntries();

    KX_INTERNAL void _closeSiblings();

    std::vector<std::unique_ptr<_KXUIMenuBase>> _entries;
    int32_t _open, _closesSiblings;
};
